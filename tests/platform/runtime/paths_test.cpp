#include "platform/runtime/paths.h"

#include "file_folder.h"

namespace tolvek::test {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

TEST(PathsJoinTest, PutsExactlyOneSeparatorBetween)
{
    EXPECT_EQ(joinPath(u"/mail", u"Tolvek.Mdb"), u"/mail/Tolvek.Mdb");
    EXPECT_EQ(joinPath(u"/mail/", u"Tolvek.Mdb"), u"/mail/Tolvek.Mdb");
    EXPECT_EQ(joinPath(u"/mail", u"/Tolvek.Mdb"), u"/mail/Tolvek.Mdb");
    EXPECT_EQ(joinPath(u"/mail/", u"/Tolvek.Mdb"), u"/mail/Tolvek.Mdb");
    EXPECT_EQ(joinPath(u"/", u"a"), u"/a");
    EXPECT_EQ(joinPath(u"/受信箱", u""), u"/受信箱/");
}

TEST(PathsJoinTest, AnEmptyFolderIsNotTheCurrentOne)
{
    EXPECT_EQ(joinPath(u"", u"a"), u"/a");
}

TEST(PathsTextTest, GoesBothWaysAndTakesNamesAsWritten)
{
    for (TextView text : {u"/mail/ペット.ppl", u"a b", u"C:\\mail\\x", u"/𠮟/か\u3099"})
        EXPECT_EQ(pathText(nativePath(text)), text);
    EXPECT_EQ(nativePath(u"/ペット").string(), "/ペット");
}

TEST(PathsAppTest, HasNoSeparatorAtItsEnd)
{
    setAppPath(u"/opt/tolvek/");
    EXPECT_EQ(appPath(), u"/opt/tolvek");
    setAppPath(u"/");
    EXPECT_EQ(appPath(), u"/");
    setAppPath(u"");
    EXPECT_EQ(appPath(), u"");
}

class PathsExistingTest : public FileFolderTest {
protected:
    Names found(TextView name) const
    {
        const Path path = existingPath(text(name));
        return {path.lexically_relative(folder.path()).string()};
    }
};

TEST_F(PathsExistingTest, TheExactNameComesFirst)
{
    given("TOLVEK.INI");
    given("tolvek.ini");
    EXPECT_EQ(found(u"tolvek.ini"), Names{"tolvek.ini"});
    EXPECT_EQ(found(u"TOLVEK.INI"), Names{"TOLVEK.INI"});
    EXPECT_EQ(found(u"Tolvek.Ini"), Names{"TOLVEK.INI"});
}

TEST_F(PathsExistingTest, CaseDoesntCountInAnyComponent)
{
    given("PostPet/Mail/Ｂｏｘ１.PPL");
    EXPECT_EQ(found(u"postpet/MAIL/ｂＯＸ１.ppl"), Names{"PostPet/Mail/Ｂｏｘ１.PPL"});
    EXPECT_EQ(found(u"postpet/MAIL"), Names{"PostPet/Mail"});
}

TEST_F(PathsExistingTest, ComposedAndDecomposedKanaAreTheSame)
{
    given("か\u3099ぞう/パ.ppl");
    EXPECT_EQ(found(u"がぞう/ハ\u309A.PPL"), Names{"か\u3099ぞう/パ.ppl"});
}

TEST_F(PathsExistingTest, WidthVoicingAndKanaTypeDoCount)
{
    given("ガ");
    for (TextView name : {u"カ", u"が", u"ｶﾞ"})
        EXPECT_EQ(existingPath(text(name)), nativePath(text(name)));
}

TEST_F(PathsExistingTest, AFolderThatLacksTheRestDoesntHideOneThatHasIt)
{
    fs::create_directories(folder / "mail");
    given("Mail/a.ppl");
    EXPECT_EQ(found(u"mail/A.ppl"), Names{"Mail/a.ppl"});
}

TEST_F(PathsExistingTest, WhatIsntThereStaysAsWritten)
{
    given("Mail/a");
    EXPECT_EQ(found(u"mail/B.ppl"), Names{"mail/B.ppl"});
    EXPECT_EQ(found(u"mail/a/b"), Names{"mail/a/b"});
    EXPECT_EQ(existingPath(u""), Path());
}

TEST_F(PathsExistingTest, AFolderThatCantBeListedLeavesTheNameAsWritten)
{
    given("Mail/a");
    breakOperation(FileOperation::List, std::errc::permission_denied);
    EXPECT_EQ(found(u"mail/a"), Names{"mail/a"});
}

TEST_F(PathsExistingTest, ARelativeNameIsLookedForInTheCurrentFolder)
{
    const fs::path before = fs::current_path();
    given("Sub/File");
    fs::current_path(folder.path());
    EXPECT_EQ(existingPath(u"sub/file"), Path("Sub/File"));
    fs::current_path(before);
}

TEST_F(PathsExistingTest, ANewNameGoesIntoTheFolderThatIsMeant)
{
    given("Mail/old.Txt");
    EXPECT_EQ(targetPath(text(u"mail/New.Txt")), folder / "Mail/New.Txt");
    EXPECT_EQ(targetPath(text(u"mail/OLD.txt")), folder / "Mail/old.Txt");
    EXPECT_EQ(targetPath(text(u"none/New.Txt")), folder / "none/New.Txt");
    EXPECT_EQ(targetPath(u"New.Txt"), Path("New.Txt"));
}

}
