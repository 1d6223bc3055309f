#include "platform/runtime/profile.h"
#include "platform/system/test_hooks.h"

#include "file_folder.h"
#include "platform/runtime/codepage932.h"

namespace tolvek::test {

namespace fs = std::filesystem;

constexpr TextView kSection = u"Mail Font";
constexpr TextView kKey = u"Mail Text Font";

class ProfileTest : public FileFolderTest {
protected:
    // "-" if the key isn't found.
    Text read(TextView section, TextView key, int size = 255)
    {
        return getProfileString(section, key, u"-", size, text(u"TOLVEK.ini"));
    }
    Text readFrom(const std::string& bytes)
    {
        given("TOLVEK.ini", bytes);
        return read(kSection, kKey);
    }
    bool write(TextView section, TextView key, TextView value)
    {
        return writeProfileString(section, key, value, text(u"TOLVEK.ini"));
    }
    // The file after the one key has been written to it.
    std::string writtenInto(const std::string& bytes, TextView value)
    {
        given("TOLVEK.ini", bytes);
        EXPECT_TRUE(write(kSection, kKey, value));
        return contents("TOLVEK.ini");
    }
};

struct Form {
    const char* story;
    std::string bytes;
    Text value;
};

TEST_F(ProfileTest, TheFileInAllItsOddForms)
{
    const Form table[] = {
        {"CR LF", "[Mail Font]\r\nMail Text Font=x\r\n", u"x"},
        {"LF", "[Mail Font]\nMail Text Font=x\n", u"x"},
        {"CR", "[Mail Font]\rMail Text Font=x\r", u"x"},
        {"no final line end", "[Mail Font]\r\nMail Text Font=x", u"x"},
        {"empty file", "", u"-"},
        {"empty lines", "\r\n\r\n[Mail Font]\r\n\r\nMail Text Font=x\r\n", u"x"},
        {"case", "[mail FONT]\nMAIL text Font=x\n", u"x"},
        {"blanks around names and values",
         " \t[ Mail Font ] \r\n\t Mail Text Font \t=\t x y \t\r\n", u"x y"},
        {"comments",
         "; [Mail Font]\n[Mail Font]\n;Mail Text Font=y\n ; Mail Text Font=y\nMail Text Font=x\n",
         u"x"},
        {"no comment behind a value", "[Mail Font]\nMail Text Font=x ; y\n", u"x ; y"},
        {"a comment behind the heading", "[Mail Font] ; see [x]\nMail Text Font=x\n", u"x"},
        {"heading without its end", "[Mail Font\nMail Text Font=x\n", u"x"},
        {"first section counts", "[Mail Font]\na=1\n[Mail Font]\nMail Text Font=x\n", u"-"},
        {"first key counts", "[Mail Font]\nMail Text Font=x\nMail Text Font=y\n", u"x"},
        {"key before any section", "Mail Text Font=y\n[Mail Font]\n", u"-"},
        {"key in another section", "[Other]\nMail Text Font=y\n[Mail Font]\n", u"-"},
        {"key behind the section", "[Mail Font]\n[Other]\nMail Text Font=y\n", u"-"},
        {"double quotes", "[Mail Font]\nMail Text Font=\" x \"\n", u" x "},
        {"single quotes", "[Mail Font]\nMail Text Font=' x '\n", u" x "},
        {"one pair alone", "[Mail Font]\nMail Text Font=\"\"x\"\"\n", u"\"x\""},
        {"unlike quotes", "[Mail Font]\nMail Text Font=\"x'\n", u"\"x'"},
        {"a lone quote", "[Mail Font]\nMail Text Font=\"\n", u"\""},
        {"empty value", "[Mail Font]\nMail Text Font=\n", u""},
        {"empty quotes", "[Mail Font]\nMail Text Font=\"\"\n", u""},
        {"line without =", "[Mail Font]\nMail Text Font\n", u"-"},
        {"= in the value", "[Mail Font]\nMail Text Font=a=b\n", u"a=b"},
        {"full-width blanks stay", "[Mail Font]\nMail Text Font=\x81\x40x\x81\x40\n",
         u"\u3000x\u3000"},
        {"double bytes",
         "[Mail Font]\nMail Text Font=\x82\x6c\x82\x72 \x83\x53\x83\x56\x83\x62\x83\x4e\n",
         u"ＭＳ ゴシック"},
    };
    for (const auto& [story, bytes, value] : table)
        EXPECT_EQ(readFrom(bytes), value) << story;
}

TEST_F(ProfileTest, InnerBlanksOfKeyNamesCount)
{
    given("TOLVEK.ini", "[Form Position]\r\nForm Top Position=1\r\nForm Top    Position=2\r\n");
    EXPECT_EQ(read(u"Form Position", u"Form Top    Position"), u"2");
    EXPECT_EQ(read(u"Form Position", u"Form Top Position"), u"1");
    EXPECT_EQ(read(u"Form Position", u"Form Top  Position"), u"-");
    EXPECT_EQ(read(u"Form  Position", u"Form Top Position"), u"-");
}

TEST_F(ProfileTest, ABracketInsideACharacterEndsNoHeading)
{
    // ー and ゼ are 81 5B and 83 5B, ソ is 83 5C, ゾ 83 5D.
    given("TOLVEK.ini", toAnsi(u"[ゾーン]\r\nソ=1\r\n[ゼ]\r\nソ=2\r\n"));
    EXPECT_EQ(read(u"ゾーン", u"ソ"), u"1");
    EXPECT_EQ(read(u"ゼ", u"ソ"), u"2");
}

TEST_F(ProfileTest, AMissingOrUnreadableFileGivesTheDefault)
{
    EXPECT_EQ(read(kSection, kKey), u"-");
    fs::create_directory(folder / "TOLVEK.ini");
    EXPECT_EQ(read(kSection, kKey), u"-");
    fs::remove(folder / "TOLVEK.ini");
    given("TOLVEK.ini", "[Mail Font]\nMail Text Font=x\n");
    breakOperation(FileOperation::Read, std::errc::io_error);
    EXPECT_EQ(read(kSection, kKey), u"-");
}

TEST_F(ProfileTest, TheLengthIsInBytes)
{
    given("TOLVEK.ini", toAnsi(u"[s]\nペット=ポスト\nempty=\n"));
    auto lengthOf = [&](TextView key, TextView fallback) {
        int length = -1;
        getProfileString(u"s", key, fallback, 255, text(u"TOLVEK.ini"), &length);
        return length;
    };
    EXPECT_EQ(lengthOf(u"ペット", u""), 6);
    EXPECT_EQ(lengthOf(u"empty", u"default"), 0);
    EXPECT_EQ(lengthOf(u"none", u"既定  "), 4);
    EXPECT_EQ(lengthOf(u"none", u""), 0);
}

TEST_F(ProfileTest, AValueIsCutWithoutHalfACharacter)
{
    auto cut = [&](const Text& value) {
        given("TOLVEK.ini", toAnsi(u"[s]\nk=" + value + u"\n"));
        return read(u"s", u"k");
    };
    const Text kana253(253, u'ｱ');
    EXPECT_EQ(cut(Text(300, u'a')), Text(254, u'a'));
    EXPECT_EQ(cut(Text(200, u'あ')), Text(127, u'あ'));
    // byte 254 is the first half of a character
    EXPECT_EQ(cut(u"a" + Text(200, u'あ')), u"a" + Text(126, u'あ'));
    EXPECT_EQ(cut(kana253 + u"あ"), kana253);
    EXPECT_EQ(cut(kana253 + u"ｲあ"), kana253 + u"ｲ");
    EXPECT_EQ(read(u"s", u"none", 1), u"");
    EXPECT_EQ(getProfileString(u"s", u"none", Text(200, u'あ'), 255, text(u"TOLVEK.ini")),
              Text(127, u'あ'));
}

struct Write {
    const char* story;
    std::string before;
    std::string after;
};

TEST_F(ProfileTest, WritingChangesNothingButItsKey)
{
    const Write table[] = {
        {"missing value", "", "[Mail Font]\r\nMail Text Font=new\r\n"},
        {"key replaced", "[Mail Font]\r\nMail Text Font=old\r\nz=1\r\n",
         "[Mail Font]\r\nMail Text Font=new\r\nz=1\r\n"},
        {"case and spacing kept", " [MAIL font]\n mail TEXT font =  old \n",
         " [MAIL font]\n mail TEXT font =  new\n"},
        {"first of two", "[Mail Font]\nMail Text Font=1\nMail Text Font=2\n",
         "[Mail Font]\nMail Text Font=new\nMail Text Font=2\n"},
        {"no final line end", "[Mail Font]\r\nMail Text Font=old",
         "[Mail Font]\r\nMail Text Font=new"},
        {"added behind the last key", "[Mail Font]\na=1\n\n; next\n[Other]\nb=2\n",
         "[Mail Font]\na=1\nMail Text Font=new\n\n; next\n[Other]\nb=2\n"},
        {"added without a final line end", "[Mail Font]\r\na=1",
         "[Mail Font]\r\na=1\r\nMail Text Font=new\r\n"},
        {"added to an empty section", "[Mail Font]\n\n[Other]\n",
         "[Mail Font]\nMail Text Font=new\n\n[Other]\n"},
        {"section at the end", "[Other]\nb=2\n", "[Other]\nb=2\n[Mail Font]\nMail Text Font=new\n"},
        {"section behind a last line without end", "[Other]\r\nb=2",
         "[Other]\r\nb=2\r\n[Mail Font]\r\nMail Text Font=new\r\n"},
        {"unknown bytes",
         "\xff\xfe\x80junk\r\nMail Text Font=y\n;\x81\r[Mail Font]\r\n\xfd=\x1a\r\n",
         "\xff\xfe\x80junk\r\nMail Text Font=y\n;\x81\r[Mail Font]\r\n\xfd=\x1a\r\nMail Text "
         "Font=new\r\n"},
        {"quotes are replaced too", "[Mail Font]\nMail Text Font=\"old\"\n",
         "[Mail Font]\nMail Text Font=new\n"},
        {"empty value filled", "[Mail Font]\nMail Text Font= \n",
         "[Mail Font]\nMail Text Font= new\n"},
    };
    for (const auto& [story, before, after] : table) {
        EXPECT_EQ(writtenInto(before, u"new"), after) << story;
        EXPECT_EQ(read(kSection, kKey), u"new") << story;
    }
}

TEST_F(ProfileTest, JapaneseValuesAreWrittenInTheCodePage)
{
    EXPECT_EQ(writtenInto("", u"ＭＳ ゴシック"),
              "[Mail Font]\r\nMail Text Font=" + toAnsi(u"ＭＳ ゴシック") + "\r\n");
    EXPECT_EQ(read(kSection, kKey), u"ＭＳ ゴシック");
}

TEST_F(ProfileTest, AnEmptyValueIsAValue)
{
    EXPECT_EQ(writtenInto("[Mail Font]\r\nMail Text Font=old\r\n", u""),
              "[Mail Font]\r\nMail Text Font=\r\n");
}

TEST_F(ProfileTest, AValueCantBreakOutOfItsLine)
{
    EXPECT_EQ(writtenInto("", u"x\r\n[Form Position]\r\ny=1"),
              "[Mail Font]\r\nMail Text Font=x\r\n");
    EXPECT_EQ(writtenInto("", Text(u"x\0y", 3)), "[Mail Font]\r\nMail Text Font=x\r\n");
    EXPECT_EQ(writtenInto("", u"  x "), "[Mail Font]\r\nMail Text Font=x\r\n");
}

TEST_F(ProfileTest, AMissingFileIsCreatedInTheFolderThatIsThere)
{
    EXPECT_TRUE(write(kSection, kKey, u"x"));
    EXPECT_EQ(everything(), std::vector<std::string>{"TOLVEK.ini"});
    EXPECT_FALSE(writeProfileString(kSection, kKey, u"x", text(u"none/TOLVEK.ini")));
    EXPECT_EQ(everything(), std::vector<std::string>{"TOLVEK.ini"});
}

TEST_F(ProfileTest, AFileOfAnotherCaseIsTheFile)
{
    given("tolvek.INI", "[Mail Font]\nMail Text Font=old\n");
    EXPECT_EQ(read(kSection, kKey), u"old");
    EXPECT_TRUE(write(kSection, kKey, u"new"));
    EXPECT_EQ(everything(), std::vector<std::string>{"tolvek.INI"});
    EXPECT_EQ(contents("tolvek.INI"), "[Mail Font]\nMail Text Font=new\n");
}

TEST_F(ProfileTest, AReadOnlyFileIsRefusedThoughARenameCouldReplaceIt)
{
    given("TOLVEK.ini", "[Mail Font]\r\nMail Text Font=old\r\n");
    protect("TOLVEK.ini");
    EXPECT_FALSE(write(kSection, kKey, u"new"));
    EXPECT_FALSE(write(kSection, kKey, u"old")); // also if nothing would change
    EXPECT_EQ(contents("TOLVEK.ini"), "[Mail Font]\r\nMail Text Font=old\r\n");
    EXPECT_EQ(fs::status(folder / "TOLVEK.ini").permissions(), fs::perms(0444));
}

TEST_F(ProfileTest, AWriteThatFailsLeavesTheOldFile)
{
    using enum FileOperation;
    const std::string old = "[Mail Font]\r\nMail Text Font=old\r\n";
    given("TOLVEK.ini", old);
    for (FileOperation step : {Open, Read, Create, Write, Flush, Replace}) {
        breakOperation(step, std::errc::no_space_on_device);
        EXPECT_FALSE(write(kSection, kKey, u"new"));
        hooks::setFileProbe({});
        EXPECT_EQ(contents("TOLVEK.ini"), old);
        EXPECT_EQ(everything().size(), 1U);
    }
}

TEST_F(ProfileTest, AFolderInTheFilesPlaceIsRefused)
{
    fs::create_directory(folder / "TOLVEK.ini");
    EXPECT_FALSE(write(kSection, kKey, u"x"));
}

TEST_F(ProfileTest, AValueThatStandsThereIsntWrittenAgain)
{
    breakOperation(FileOperation::Create, std::errc::io_error);
    const char* const forms[] = {"x y", "  x y  ", "\"x y\"", "'x y'"};
    for (const std::string form : forms) {
        const std::string before = "[Mail Font]\r\nMail Text Font=" + form + "\r\n";
        EXPECT_EQ(writtenInto(before, u"x y"), before);
    }
    EXPECT_FALSE(write(kSection, kKey, u"X y"));
}

TEST_F(ProfileTest, BlanksThatQuotesKeepStayAfterReadingAndWriting)
{
    const std::string before = "[Mail Font]\r\nMail Text Font=\" x \"\r\n";
    given("TOLVEK.ini", before);
    EXPECT_TRUE(write(kSection, kKey, read(kSection, kKey)));
    EXPECT_EQ(contents("TOLVEK.ini"), before);
}

}
