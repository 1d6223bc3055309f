#include "help/help_book.h"

#include "platform/forms/qt_text.h"
#include "platform/system/files.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <exception>
#include <memory>

namespace tolvek {

namespace {

// The toolkit takes full-width blanks for any other and draws a narrow one in their
// place; captions have them.
QByteArray withWideBlanksKept(const QByteArray& html)
{
    static const QRegularExpression kOutsideTags(QStringLiteral("(\\x{3000}+)(?![^<>]*>)"));
    return QString::fromUtf8(html)
        .replace(kOutsideTags, QStringLiteral("<span style=\"white-space: pre\">\\1</span>"))
        .toUtf8();
}

std::unique_ptr<QTextDocument> documentOf(const QByteArray& html)
{
    auto document = std::make_unique<QTextDocument>();
    document->setHtml(QString::fromUtf8(html));
    return document;
}

// The address of a line, of which any part may be the link.
QString linkOf(const QTextBlock& line)
{
    for (auto part = line.begin(); !part.atEnd(); ++part)
        if (const QString link = part.fragment().charFormat().anchorHref(); !link.isEmpty())
            return link;
    return {};
}

// The links in lists, and the headings between them.
std::vector<HelpLink> linksOf(const QByteArray& html)
{
    std::vector<HelpLink> links;
    const auto document = documentOf(html);
    for (QTextBlock line = document->begin(); line.isValid(); line = line.next()) {
        const bool heading = line.blockFormat().headingLevel() == 2;
        const QString link = linkOf(line);
        if (heading || (line.textList() && !link.isEmpty()))
            links.push_back({line.text().trimmed(), link});
    }
    return links;
}

QString pageOf(const QString& address)
{
    return address.section(QLatin1Char('#'), 0, 0);
}

}

std::optional<HelpBook> HelpBook::read(const Path& file)
{
    try {
        auto items = unpackedHelp(QByteArray::fromStdString(readFile(file)));
        if (!items || !items->contains(kContents)) return {};
        return HelpBook(std::move(*items));
    } catch (const std::exception&) {
        return {}; // the caller says that the file can't be shown
    }
}

HelpBook::HelpBook(HelpItems items) : items_(std::move(items))
{
    for (auto item = items_.begin(); item != items_.end(); ++item)
        if (item.key().endsWith(QLatin1String(".html"))) *item = withWideBlanksKept(*item);
    contents_ = linksOf(items_.value(kContents));
    terms_ = linksOf(items_.value(kTerms));
    addPage(kContents);
    for (const HelpLink& link : contents_)
        addPage(pageOf(link.address));
}

void HelpBook::addPage(const QString& name)
{
    const QByteArray* const html = item(name);
    if (!html || page(name)) return;
    const auto document = documentOf(*html);
    pages_.push_back({name, document->metaInformation(QTextDocument::DocumentTitle),
                      fromQt(document->toPlainText())});
}

const QByteArray* HelpBook::item(const QString& name) const
{
    const auto found = items_.constFind(name);
    return found == items_.constEnd() ? nullptr : &*found;
}

const HelpBook::Page* HelpBook::page(const QString& name) const
{
    const auto found = std::ranges::find(pages_, name, &Page::name);
    return found == pages_.end() ? nullptr : &*found;
}

}
