#include "app/converter_library.h"
#include "app/test_hooks.h"
#include "app/text_routines.h"
#include "support/msg_box_script.h"
#include "support/yield_watch.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class TextRoutinesTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ConverterLibrary library;
        library.Mail_StrChange = [this](const Text& source, Text& output, Int16& length) {
            ++calls;
            output = u"<" + source + u">" + blanks(20);
            length = static_cast<int>(source.size()) + 2;
        };
        hooks::setConverterLibrary(library);
    }
    void TearDown() override { hooks::setConverterLibrary({}); }

    Text decoded(const Text& source)
    {
        Text result = u"before";
        Mail_StrChange_Sub(source, result);
        return result;
    }
    static Text changed(const Text& source, const Text& search, const Text& replacement,
                        Int16 length)
    {
        Text result = u"before";
        StrChange(source, search, replacement, length, result);
        return result;
    }
    static Text escaped(const Text& source)
    {
        Text result;
        SendKeyEscape(source, result);
        return result;
    }

    int calls = 0;
    MsgBoxScript boxes;
};

TEST_F(TextRoutinesTest, BlanksAreDecodedWithoutTheLibrary)
{
    EXPECT_EQ(decoded(u""), u"");
    EXPECT_EQ(decoded(u"  　 "), u"");
    EXPECT_EQ(calls, 0);
}

TEST_F(TextRoutinesTest, ALineEndAloneComesBackUnchanged)
{
    EXPECT_EQ(decoded(u"  \r\n "), u"  \r\n ");
    EXPECT_EQ(calls, 0);
}

TEST_F(TextRoutinesTest, TheResultIsAsLongAsTheLibrarySays)
{
    EXPECT_EQ(decoded(u"abc"), u"<abc>");
    EXPECT_EQ(calls, 1);
}

TEST_F(TextRoutinesTest, SourceAndResultMayBeOneText)
{
    Text text = u"abc";
    Mail_StrChange_Sub(text, text);
    EXPECT_EQ(text, u"<abc>");
    StrChange(text, u"<", u"(", 1, text);
    EXPECT_EQ(text, u"(abc>");
}

TEST_F(TextRoutinesTest, AFailingLibraryIsReportedAndGivesNothing)
{
    ConverterLibrary library;
    library.Mail_StrChange = [](const Text&, Text&, Int16&) { throw RuntimeError(53); };
    hooks::setConverterLibrary(library);
    boxes.expect(u"エラー番号： 53\r（" + errorText(53) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (Mail_StrChange_Sub)");
    EXPECT_EQ(decoded(u"abc"), u"");
}

struct Change {
    const char* story;
    Text source, search, replacement;
    int length;
    Text result;
};

TEST_F(TextRoutinesTest, PiecesAreReplacedInPlace)
{
    const Change table[] = {
        {"every occurrence", u"a|b|c", u"|", u"｜", 1, u"a｜b｜c"},
        {"at the very end", u"abcXY", u"XY", u"12", 2, u"abc12"},
        {"at the very end in wide characters", u"漢字｜", u"｜", u"|", 1, u"漢字|"},
        {"a longer replacement is cut to the length", u"a-b", u"-", u"123", 1, u"a1b"},
        {"a shorter one overwrites what it has", u"abcd", u"bc", u"1", 2, u"a1cd"},
        {"no occurrence", u"abc", u"x", u"y", 1, u"abc"},
        {"case counts", u"aA", u"A", u"b", 1, u"ab"},
        {"blank source", u"  ", u" ", u"x", 1, u"  "},
        {"blank search", u"a b", u" ", u"x", 1, u"a b"},
        {"blank replacement", u"a-b", u"-", u" ", 1, u"a-b"},
        {"length below 1", u"a-b", u"-", u"x", 0, u"a-b"},
        {"leading blanks leave a late piece alone", u"   a|", u"|", u"x", 1, u"   a|"},
        {"the walk goes on behind a replaced piece", u"aab", u"ab", u"xa", 2, u"axa"},
        {"a wide piece shorter than the length, at the end", u"xyあ", u"あ", u"い", 2, u"xyい"},
    };
    for (const Change& row : table)
        EXPECT_EQ(changed(row.source, row.search, row.replacement, row.length), row.result)
            << row.story;
}

TEST_F(TextRoutinesTest, ASearchTextShorterThanTheLengthIsTold)
{
    boxes.expect(u"変更対象文字数（002）入力文字列（a）の相関エラーです。", MsgAnswer::Ok,
                 u"StrChange");
    EXPECT_EQ(changed(u"abc", u"a", u"x", 2), u"abc");
}

TEST_F(TextRoutinesTest, ASourceShorterThanTheLengthIsTold)
{
    boxes.expect(u"変更対象文字数（003）入力文字数（2）の相関エラーです。", MsgAnswer::Ok,
                 u"StrChange");
    EXPECT_EQ(changed(u" ab", u"abc", u"xyz", 3), u" ab");
}

TEST_F(TextRoutinesTest, TheKeySendersSpecialCharactersComeInBraces)
{
    EXPECT_EQ(escaped(u"a[b]c"), u"a{[}b]c");
    EXPECT_EQ(escaped(u"+^%~()[{}"), u"{+}{^}{%}{~}{(}{)}{[}{{}{}}");
    EXPECT_EQ(escaped(u"日本 ab"), u"日本 ab");
    EXPECT_EQ(escaped(u""), u"");
}

TEST_F(TextRoutinesTest, ATextThatWasWorkedOnYieldsOnceAndAnyOtherNever)
{
    EXPECT_EQ(yieldsOf([&] { decoded(u"a"); }), 1);
    EXPECT_EQ(yieldsOf([&] { decoded(u"  "); }), 0);
    EXPECT_EQ(yieldsOf([] { changed(u"abc", u"b", u"x", 1); }), 1);
    EXPECT_EQ(yieldsOf([] { changed(u"abc", u"b", u"x", 0); }), 0);
}

}
}
