#include "help/help_browser.h"

#include "help/help_search.h"
#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr double kPoints = 11;
constexpr int kMargins = 40;    // pixels beside a picture
constexpr int kNarrowest = 200; // a narrower page scrolls
const QColor kMark(0xFF, 0xE0, 0x66);
const QColor kMarkText(0x00, 0x00, 0x00);

// In points: the toolkit can't zoom a font that is sized in pixels.
QFont textFont()
{
    QFont font(installedFamily(kDefaultFontName));
    font.setPointSizeF(kPoints);
    return font;
}

}

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent)
{
    setObjectName(QStringLiteral("page"));
    setAccessibleName(QStringLiteral("説明"));
    setFont(textFont());
    setOpenExternalLinks(false);
    connect(this, &QTextBrowser::sourceChanged, this, [this] { paintMarks(); });
}

void HelpBrowser::setBook(const HelpBook* book)
{
    book_ = book;
}

// The scheme keeps a name in a link from being taken for a file on the disk.
void HelpBrowser::open(const QString& address)
{
    setSource(QUrl(QStringLiteral("help:/") + address));
}

QVariant HelpBrowser::loadResource(int type, const QUrl& address)
{
    const QByteArray* const item = book_ ? book_->item(address.path().mid(1)) : nullptr;
    if (!item) return {};
    if (type == QTextDocument::ImageResource) return fitted(QImage::fromData(*item));
    return *item;
}

// A picture that is wider than the page would make every line of it scroll.
QImage HelpBrowser::fitted(const QImage& picture) const
{
    const int room = viewport()->width() - kMargins;
    if (picture.width() <= room || room < kNarrowest) return picture;
    return picture.scaledToWidth(room, Qt::SmoothTransformation);
}

void HelpBrowser::mark(std::vector<Text> words)
{
    words_ = std::move(words);
    paintMarks();
}

void HelpBrowser::paintMarks()
{
    marks_.clear();
    QList<ExtraSelection> selections;
    const Text text = fromQt(toPlainText());
    for (const Text& word : words_)
        for (const TextRange& place : placesOf(word, text)) {
            ExtraSelection selection;
            selection.cursor = QTextCursor(document());
            selection.cursor.setPosition(place.start);
            selection.cursor.setPosition(place.start + place.length, QTextCursor::KeepAnchor);
            selection.format.setBackground(kMark);
            selection.format.setForeground(kMarkText);
            selections.push_back(selection);
            marks_.push_back(place.start);
        }
    std::ranges::sort(marks_);
    setExtraSelections(selections);
}

void HelpBrowser::toNextMark(int step)
{
    if (marks_.empty()) return;
    const int here = textCursor().position();
    const auto after =
        step > 0 ? std::ranges::upper_bound(marks_, here) : std::ranges::lower_bound(marks_, here);
    int at = 0;
    if (step > 0)
        at = after == marks_.end() ? marks_.front() : *after;
    else
        at = after == marks_.begin() ? marks_.back() : *std::prev(after);
    QTextCursor cursor(document());
    cursor.setPosition(at);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void HelpBrowser::resetZoom()
{
    setFont(textFont());
}

}
