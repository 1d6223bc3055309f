// Whatever a message box says is in the manual, word for word: a user who searches for
// a message finds what to do. The texts are taken from the sources.
#include "help/help_book.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/runtime_error.h"
#include "support/temp_folder.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace tolvek::test {
namespace {

namespace fs = std::filesystem;

const fs::path kSources = fs::path(TOLVEK_CHECKOUT) / "src";

// The main program's folders whose boxes are its own words. Those of the platform are
// descriptions of errors; the converter shows none.
const char* const kFolders[] = {"app",    "store",   "filter", "reply", "friend",
                                "import", "dialogs", "browse", "shell"};

QString withoutBlanks(QString text)
{
    return text.remove(QRegularExpression("[\\s\\x{3000}]"));
}

// Of the pages named, or of all.
QString manualText(const QStringList& names = {})
{
    const auto book = HelpBook::read(TOLVEK_HELP_FILE);
    QString all;
    if (book)
        for (const HelpBook::Page& page : book->pages())
            if (names.isEmpty() || names.contains(page.name)) all += toQt(page.text);
    return withoutBlanks(all);
}

QString source(const fs::path& path)
{
    return QString::fromStdString(readBytes(path));
}

std::vector<fs::path> sourcesIn(const char* folder)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(kSources / folder))
        if (const auto kind = entry.path().extension(); kind == ".cpp" || kind == ".h")
            files.push_back(entry.path());
    return files;
}

std::vector<fs::path> sources()
{
    std::vector<fs::path> files;
    for (const char* const folder : kFolders)
        std::ranges::copy(sourcesIn(folder), std::back_inserter(files));
    return files;
}

// The lines of the literals in a piece of source that have Japanese words.
QStringList literalLines(const QString& piece)
{
    static const QRegularExpression kLiteral("u\"((?:[^\"\\\\]|\\\\.)*)\"");
    static const QRegularExpression kJapanese(
        "[\\x{3040}-\\x{30ff}\\x{4e00}-\\x{9fff}\\x{ff21}-\\x{ff9f}]");
    QStringList lines;
    for (auto found = kLiteral.globalMatch(piece); found.hasNext();)
        for (const QString& line : found.next().captured(1).split(QRegularExpression("\\\\[rn]")))
            if (line.contains(kJapanese)) lines.push_back(line);
    return lines;
}

// The arguments of each call of a function, with what follows up to the statement's end.
QStringList calls(const QString& text, const QString& function)
{
    QStringList pieces;
    const QRegularExpression call("\\b" + function + "\\(");
    for (auto found = call.globalMatch(text); found.hasNext();) {
        const qsizetype start = found.next().capturedEnd();
        pieces.push_back(text.mid(start, text.indexOf(';', start) - start));
    }
    return pieces;
}

const QString kBoxes = "(?:MsgBox|InputBox|isConfirmed|isDeletionConfirmed|tellAndEnd|lengthFault)";

// Sentences are messages wherever they are: many are named constants.
bool isSentence(const QString& line)
{
    return line.contains(QChar(u'。')) || line.contains(QChar(u'？'));
}

struct Said {
    QString line;
    std::string where;
};

std::vector<Said> saidInBoxes()
{
    std::vector<Said> said;
    for (const fs::path& path : sources()) {
        const QString text = source(path);
        QStringList lines;
        for (const QString& piece : calls(text, kBoxes))
            lines += literalLines(piece);
        for (const QString& line : literalLines(text))
            if (isSentence(line)) lines.push_back(line);
        for (const QString& line : lines)
            said.push_back({line, path.filename().string()});
    }
    return said;
}

TEST(ManualMessagesTest, EveryTextOfABoxIsInTheManual)
{
    const QString manual = manualText();
    const std::vector<Said> said = saidInBoxes();
    EXPECT_GT(said.size(), 60u);
    for (const Said& each : said)
        EXPECT_TRUE(manual.contains(withoutBlanks(each.line)))
            << each.where << ": " << each.line.toStdString();
}

TEST(ManualMessagesTest, EveryErrorNumberOfTheTableIsExplained)
{
    const QString page = source(fs::path(TOLVEK_CHECKOUT) / "docs/manual/errors.html");
    const QString manual = manualText({"errors.html"});
    int numbers = 0;
    for (int number = 1; number < 31000; ++number) {
        // A name, if there is one, is in the place of the mark.
        const QString description = toQt(errorText(number, u"%")).remove(": %");
        if (description.isEmpty()) continue;
        ++numbers;
        EXPECT_TRUE(page.contains(QString("name=\"e%1\"").arg(number))) << number;
        for (const QString& part : description.split('%'))
            EXPECT_TRUE(manual.contains(withoutBlanks(part))) << number << part.toStdString();
    }
    EXPECT_GT(numbers, 40);
}

TEST(ManualMessagesTest, TheDescriptionsOfTheDatabaseAreExplainedToo)
{
    const QString manual = manualText({"errors.html"});
    for (const fs::path& path : sourcesIn("platform/dao"))
        for (const QString& line : literalLines(source(path)).filter(QChar(u'。')))
            EXPECT_TRUE(manual.contains(withoutBlanks(line)))
                << path.filename() << ": " << line.toStdString();
}

}
}
