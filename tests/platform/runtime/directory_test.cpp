#include "platform/runtime/directory.h"

#include "file_folder.h"
#include "support/errors.h"

namespace tolvek::test {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using Texts = std::vector<Text>;

class DirectoryTest : public FileFolderTest {
protected:
    Texts fitting(TextView pattern) const { return dirAll(text(pattern)); }
};

TEST_F(DirectoryTest, DirGivesTheFirstNameThatFits)
{
    given("b.mdb");
    given("a.mdb");
    EXPECT_EQ(dir(text(u"*.mdb")), u"a.mdb");
    EXPECT_EQ(dir(text(u"b.mdb")), u"b.mdb");
    EXPECT_EQ(dir(text(u"B.MDB")), u"b.mdb");
}

TEST_F(DirectoryTest, DirOnNothingIsEmpty)
{
    given("sub/a");
    EXPECT_EQ(dir(text(u"none")), u"");
    EXPECT_EQ(dir(text(u"*.mdb")), u"");
    EXPECT_EQ(dir(text(u"none/*.mdb")), u"");
    EXPECT_EQ(dir(text(u"sub/a/*")), u"");
    EXPECT_EQ(dir(u""), u"");
    EXPECT_EQ(dir(text(u"sub/")), u"");
}

TEST_F(DirectoryTest, FilesOnly)
{
    given("Tolvek.Tmp/inside");
    EXPECT_EQ(dir(text(u"Tolvek.Tmp")), u"");
    EXPECT_EQ(fitting(u"*"), Texts{});
}

TEST_F(DirectoryTest, NamesComeInTheOrderOfTheirUnits)
{
    for (const char* name :
         {"Tolvek_20000215.Mdb", "Tolvek_19991231.Mdb", "あ.mdb", "B.mdb", "a.mdb"})
        given(name);
    EXPECT_EQ(fitting(u"*.Mdb"), (Texts{u"B.mdb", u"Tolvek_19991231.Mdb", u"Tolvek_20000215.Mdb",
                                        u"a.mdb", u"あ.mdb"}));
}

TEST_F(DirectoryTest, PatternsFitInAnyCase)
{
    given("Tolvek.Tmp");
    given("old.mdb");
    EXPECT_EQ(fitting(u"*.tmp"), Texts{u"Tolvek.Tmp"});
    EXPECT_EQ(fitting(u"*.Mdb"), Texts{u"old.mdb"});
    EXPECT_EQ(fitting(u"TOLVEK*"), Texts{u"Tolvek.Tmp"});
}

TEST_F(DirectoryTest, WildcardsInTheFoldersNameAreLiteral)
{
    given("a*[1]?/x.tmp");
    given("abc[1]d/y.tmp");
    EXPECT_EQ(fitting(u"a*[1]?/*.tmp"), Texts{u"x.tmp"});
}

TEST_F(DirectoryTest, TheFolderIsFoundInAnyCase)
{
    given("Mail/x.tmp");
    EXPECT_EQ(fitting(u"mail/*.TMP"), Texts{u"x.tmp"});
}

struct Fit {
    TextView pattern;
    TextView name;
    bool fits;
};

class DirectoryPatternTest : public FileFolderTest, public testing::WithParamInterface<Fit> {};

TEST_P(DirectoryPatternTest, FitsOrNot)
{
    const auto& [pattern, name, fits] = GetParam();
    given(toUtf8(name));
    EXPECT_EQ(dir(text(pattern)), fits ? name : u"") << toUtf8(pattern) << " on " << toUtf8(name);
}

INSTANTIATE_TEST_SUITE_P(
    Patterns, DirectoryPatternTest,
    testing::Values(Fit{u"*", u"a.b", true}, Fit{u"*.*", u"noextension", true},
                    Fit{u"*.*", u"a.b.c", true}, Fit{u"a.*", u"a", true}, Fit{u"a.*", u"ab", false},
                    Fit{u"*.tmp", u"a.tmp.bak", false}, Fit{u"*.tmp", u"a.b.tmp", true},
                    Fit{u"*.tmp", u"atmp", false}, Fit{u"a?c", u"abc", true},
                    Fit{u"a?c", u"ac", false}, Fit{u"?.txt", u"受.txt", true},
                    Fit{u"*a*b*", u"xxaxxbxx", true}, Fit{u"*a*b*", u"xxbxxa", false},
                    Fit{u"*[a]*", u"a", false}, Fit{u"*受*", u"前受後", true}));

TEST_F(DirectoryTest, KillDeletesEveryFileThatFitsAndNoFolder)
{
    for (const char* name : {"Tolvek.Tmp", "Friend.TMP", "keep.txt", "folder.tmp/x"})
        given(name);
    kill(text(u"*.tmp"));
    EXPECT_EQ(everything(), (Names{"folder.tmp", "keep.txt"}));
}

TEST_F(DirectoryTest, KillOfNothingIsError53)
{
    given("sub/a");
    for (TextView pattern : {u"none", u"*.tmp", u"none/*", u"sub", u"sub/", u""})
        EXPECT_EQ(errorOf([&] { kill(pattern.empty() ? Text() : text(pattern)); }), 53)
            << toUtf8(pattern);
    EXPECT_EQ(contents("sub/a"), "");
    EXPECT_TRUE(fileExists(folder / "sub/a"));
}

TEST_F(DirectoryTest, KillTakesOneFileAsWrittenBeforeOneInAnotherCase)
{
    given("a.tmp");
    given("A.tmp");
    kill(text(u"a.tmp"));
    EXPECT_EQ(everything(), Names{"A.tmp"});
    kill(text(u"a.tmp"));
    EXPECT_EQ(everything(), Names{});
}

TEST_F(DirectoryTest, AKillThatFailsLeavesTheRest)
{
    for (const char* name : {"a.tmp", "b.tmp", "c.tmp"})
        given(name);
    protect("b.tmp");
    EXPECT_EQ(errorOf([&] { kill(text(u"*.tmp")); }), 75);
    EXPECT_EQ(everything(), (Names{"b.tmp", "c.tmp"}));
    breakOperation(FileOperation::Remove, std::errc::device_or_resource_busy);
    EXPECT_EQ(errorOf([&] { kill(text(u"c.tmp")); }), 70);
}

TEST_F(DirectoryTest, AFolderThatCantBeListedIsTold)
{
    given("a.tmp");
    breakOperation(FileOperation::List, std::errc::permission_denied);
    EXPECT_EQ(errorOf([&] { kill(text(u"*.tmp")); }), 75);
    EXPECT_EQ(errorOf([&] { dir(text(u"*.tmp")); }), 75);
}

TEST_F(DirectoryTest, RenameMovesTheFile)
{
    given("Tolvek.Mdb", "1");
    rename(text(u"tolvek.mdb"), text(u"Tolvek.Mdb.Bak"));
    EXPECT_EQ(everything(), Names{"Tolvek.Mdb.Bak"});
    EXPECT_EQ(contents("Tolvek.Mdb.Bak"), "1");
}

TEST_F(DirectoryTest, RenameOntoAPresentNameIsError58InAnyCase)
{
    given("a", "1");
    given("B", "2");
    for (TextView target : {u"B", u"b", u"a"})
        EXPECT_EQ(errorOf([&] { rename(text(u"a"), text(target)); }), 58) << toUtf8(target);
    EXPECT_EQ(contents("a"), "1");
    EXPECT_EQ(contents("B"), "2");
}

TEST_F(DirectoryTest, RenameMayChangeTheCaseAlone)
{
    given("tolvek.mdb", "1");
    rename(text(u"tolvek.mdb"), text(u"Tolvek.Mdb"));
    EXPECT_EQ(everything(), Names{"Tolvek.Mdb"});
}

TEST_F(DirectoryTest, RenameTellsMissingSourceAndMissingFolderApart)
{
    given("a");
    EXPECT_EQ(errorOf([&] { rename(text(u"none"), text(u"b")); }), 53);
    EXPECT_EQ(errorOf([&] { rename(text(u"none/a"), text(u"b")); }), 53);
    EXPECT_EQ(errorOf([&] { rename(text(u"a"), text(u"none/b")); }), 76);
    breakOperation(FileOperation::Rename, std::errc::permission_denied);
    EXPECT_EQ(errorOf([&] { rename(text(u"a"), text(u"b")); }), 75);
}

TEST_F(DirectoryTest, CopyAnswersTrueOrFalse)
{
    given("a", "new");
    given("B", "old");
    EXPECT_FALSE(copyFile(text(u"a"), text(u"b"), true));
    EXPECT_EQ(contents("B"), "old");
    EXPECT_TRUE(copyFile(text(u"A"), text(u"b"), false));
    EXPECT_EQ(contents("B"), "new");
    EXPECT_TRUE(copyFile(text(u"a"), text(u"c"), true));
    EXPECT_EQ(contents("c"), "new");
    EXPECT_FALSE(copyFile(text(u"none"), text(u"d"), true));
    EXPECT_EQ(everything(), (Names{"B", "a", "c"}));
}

TEST_F(DirectoryTest, AttributesTellAFolderFromAFile)
{
    given("folder/a");
    fs::create_directory_symlink(folder / "folder", folder / "link");
    EXPECT_EQ(getAttr(text(u"folder")), vbDirectory);
    EXPECT_EQ(getAttr(text(u"link")), vbDirectory);
    EXPECT_EQ(getAttr(text(u"folder/a")), 0);
    EXPECT_EQ(getAttr(text(u"FOLDER")), vbDirectory);
}

TEST_F(DirectoryTest, AttributesOfComposedAndDecomposedKanaAreTheSame)
{
    given("受信フォルタ\u3099/a");
    EXPECT_EQ(getAttr(text(u"受信フォルダ")), vbDirectory);
}

TEST_F(DirectoryTest, AttributesOfNothingTellHowMuchIsMissing)
{
    given("folder/file");
    fs::create_symlink(folder / "nowhere", folder / "lost");
    fs::create_symlink(folder / "round", folder / "round");
    EXPECT_EQ(errorOf([&] { getAttr(text(u"folder/none")); }), 53);
    EXPECT_EQ(errorOf([&] { getAttr(text(u"Folder/none")); }), 53);
    EXPECT_EQ(errorOf([&] { getAttr(text(u"lost")); }), 53);
    EXPECT_EQ(errorOf([&] { getAttr(text(u"none/none")); }), 76);
    EXPECT_EQ(errorOf([&] { getAttr(text(u"folder/file/none")); }), 76);
    EXPECT_EQ(errorOf([&] { getAttr(u"C:\\Program Files\\none"); }), 76);
    EXPECT_EQ(errorOf([&] { getAttr(u""); }), 76);
    EXPECT_EQ(errorOf([&] { getAttr(text(u"round")); }), 75);
    EXPECT_EQ(errorOf([&] { getAttr(text(Text(300, u'x'))); }), 75);
}

}
