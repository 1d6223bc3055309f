// The manual itself: what its pages refer to exists, every page can be reached, and the
// build packs all of them.
#include "help/help_book.h"
#include "help/help_topics.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/paths.h"
#include "support/temp_folder.h"
#include "support/test_data.h"
#include "window/frm_tolvek.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <set>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

const fs::path kSources = fs::path(TOLVEK_CHECKOUT) / "docs/manual";

const HelpBook& manual()
{
    static const HelpBook book = [] {
        auto read = HelpBook::read(TOLVEK_HELP_FILE);
        return read ? std::move(*read) : HelpBook({});
    }();
    return book;
}

QString html(const QString& page)
{
    const QByteArray* const item = manual().item(page);
    return item ? QString::fromUtf8(*item) : QString();
}

std::set<QString> sourceFiles(const std::string& extension)
{
    std::set<QString> names;
    for (const auto& entry : fs::directory_iterator(kSources))
        if (entry.path().extension() == extension)
            names.insert(QString::fromStdString(entry.path().filename().string()));
    return names;
}

// Every value of an attribute in a page.
QStringList valuesOf(const QString& page, const char* attribute)
{
    const QRegularExpression pattern(QLatin1String(attribute) + "=\"([^\"]*)\"");
    QStringList values;
    for (auto found = pattern.globalMatch(html(page)); found.hasNext();)
        values.push_back(found.next().captured(1));
    return values;
}

bool leadsSomewhere(const QString& from, const QString& address)
{
    const QString page = address.section('#', 0, 0), place = address.section('#', 1);
    const QString target = page.isEmpty() ? from : page;
    if (!manual().item(target)) return false;
    return place.isEmpty() || valuesOf(target, "a name").contains(place);
}

TEST(ManualTest, TheBuildPacksEveryFileOfTheManual)
{
    const auto packed = unpackedHelp(QByteArray::fromStdString(readBytes(TOLVEK_HELP_FILE)));
    ASSERT_TRUE(packed);
    for (const char* const extension : {".html", ".css", ".png"})
        for (const QString& name : sourceFiles(extension))
            EXPECT_TRUE(packed->value(name).toStdString() ==
                        readBytes(kSources / name.toStdString()))
                << name.toStdString();
}

TEST(ManualTest, EveryPageIsReachedFromTheContents)
{
    for (const QString& name : sourceFiles(".html"))
        EXPECT_NE(manual().page(name), nullptr) << name.toStdString();
    EXPECT_GE(manual().pages().size(), 20u);
}

TEST(ManualTest, EveryPageHasATitleThatIsItsHeading)
{
    std::set<QString> titles;
    for (const HelpBook::Page& page : manual().pages()) {
        EXPECT_FALSE(page.title.isEmpty()) << page.name.toStdString();
        EXPECT_TRUE(html(page.name).contains("<h1>" + page.title + "</h1>"))
            << page.name.toStdString();
        EXPECT_TRUE(titles.insert(page.title).second) << page.title.toStdString();
    }
}

TEST(ManualTest, EveryLinkLeadsToAPageOrAPlaceOnIt)
{
    for (const HelpBook::Page& page : manual().pages())
        for (const QString& address : valuesOf(page.name, "href"))
            EXPECT_TRUE(leadsSomewhere(page.name, address))
                << page.name.toStdString() << " -> " << address.toStdString();
}

TEST(ManualTest, EveryPictureIsThereAndHasAWordForThoseWhoCantSeeIt)
{
    std::set<QString> used;
    for (const HelpBook::Page& page : manual().pages()) {
        const QStringList pictures = valuesOf(page.name, "img src");
        EXPECT_EQ(valuesOf(page.name, "alt").removeAll(QString()), 0);
        EXPECT_EQ(valuesOf(page.name, "alt").size(), pictures.size()) << page.name.toStdString();
        for (const QString& name : pictures) {
            const QByteArray* const item = manual().item(name);
            ASSERT_NE(item, nullptr) << name.toStdString();
            EXPECT_FALSE(QImage::fromData(*item).isNull()) << name.toStdString();
            used.insert(name);
        }
    }
    EXPECT_EQ(used, sourceFiles(".png")); // none is carried along unused
}

TEST(ManualTest, NoPlaceIsThereTwice)
{
    for (const HelpBook::Page& page : manual().pages()) {
        QStringList places = valuesOf(page.name, "a name");
        const qsizetype all = places.size();
        places.removeDuplicates();
        EXPECT_EQ(places.size(), all) << page.name.toStdString();
    }
}

TEST(ManualTest, TheManualReadsNothingFromOutside)
{
    for (const HelpBook::Page& page : manual().pages())
        EXPECT_FALSE(html(page.name).contains("//")) << page.name.toStdString();
}

TEST(ManualTest, EveryWindowWithAPageHasItInTheManual)
{
    for (const HelpTopic& topic : helpTopics())
        EXPECT_TRUE(leadsSomewhere({}, topic.page)) << topic.window.data();
    EXPECT_TRUE(helpPageOf("frmTolvek").isEmpty());
}

QString plain(const Text& text)
{
    return toQt(text).remove(QRegularExpression("[\\s\\x{3000}]"));
}

TEST(ManualTest, EveryCommandOfTheMainWindowIsInTheListOfCommands)
{
    const HelpBook::Page* const commands = manual().page("commands.html");
    ASSERT_NE(commands, nullptr);
    const QString page = plain(commands->text);
    frmTolvek form;
    form.Load();
    for (const MenuEntry* entry : form.window()->findChildren<MenuEntry*>())
        EXPECT_TRUE(entry->Caption() == u"-" || page.contains(plain(entry->Caption())))
            << toUtf8(entry->Caption());
    for (const CommandButton* button : form.window()->findChildren<CommandButton*>()) {
        EXPECT_TRUE(page.contains(plain(button->Caption()))) << toUtf8(button->Caption());
        EXPECT_TRUE(page.contains(plain(button->ToolTipText()))) << toUtf8(button->ToolTipText());
    }
}

}
}
