// Compares the names with the table that tells the user what each file is.
#include "app/file_names.h"

#include "platform/dao/dao.h"
#include "platform/system/files.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace tolvek::test {
namespace {

using Names = std::set<std::string>;

// The first cells of the table's rows.
std::string documentedNames()
{
    const std::string page =
        readFile(std::filesystem::path(TOLVEK_CHECKOUT) / "docs/store-format.md");
    const std::size_t begin = page.find("## Files beside the database");
    const std::string section = page.substr(begin, page.find("\n## ", begin) - begin);
    std::string cells;
    const std::regex row("\n\\| (`[^|]*) \\|");
    for (std::sregex_iterator found(section.begin(), section.end(), row), end; found != end;
         ++found)
        cells += found->str(1) + "\n";
    return cells;
}

Names matchesOf(const std::string& pattern)
{
    const std::string cells = documentedNames();
    const std::regex regex(pattern);
    Names names;
    for (std::sregex_iterator found(cells.begin(), cells.end(), regex), end; found != end; ++found)
        names.insert(found->str(1));
    return names;
}

TEST(FileNamesTest, EverySideFileIsInTheTableAndNothingElse)
{
    Names ours;
    for (const TextView suffix : kSideSuffixes)
        ours.insert(toUtf8(suffix));
    Names documented = matchesOf("`" + toUtf8(kArchiveName) + "(\\.[A-Za-z0-9]+)[^`]*`");
    documented.merge(matchesOf("`" + toUtf8(kArchiveName) + "\\.BeforeLoad(\\.[A-Za-z]+)`"));
    EXPECT_EQ(documented, ours);
}

TEST(FileNamesTest, UnfinishedFilesAreInTheTable)
{
    const std::string compacted = toUtf8(DBEngine::kUnfinishedSuffix);
    EXPECT_EQ(matchesOf("`\\*(\\.[A-Za-z]+)`"), (Names{compacted, std::string(kUnfinishedSuffix)}));
}

TEST(FileNamesTest, TheOtherFilesAreInTheTable)
{
    for (const TextView name : {kArchiveName, kMailTempName, kFriendTempName, kEditedBook,
                                kEditedBookRead, kEditedBookKept, kSettingsName, kReadLogName})
        EXPECT_NE(documentedNames().find("`" + toUtf8(name) + "`"), std::string::npos)
            << toUtf8(name);
    for (const Text& name :
         {backUpName(u"yyyymmdd"), sideFile(Text(kSettingsName), kOldSettingsSuffix)})
        EXPECT_NE(documentedNames().find("`" + toUtf8(name) + "`"), std::string::npos)
            << toUtf8(name);
}

}
}
