#include "platform/runtime/kana.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Row {
    Text from, to;
};

TEST(TextWidthTest, NarrowToWide)
{
    const Row table[] = {
        {u"", u""},
        {u" ", u"\u3000"},
        {u"!az~AZ09", u"！ａｚ～ＡＺ０９"},
        {u"\"'|", u"＂＇｜"},
        {u"C:\\a", u"Ｃ：\\ａ"},
        {u"ｱｲｳｴｵｧｯｬ", u"アイウエオァッャ"},
        {u"ｦﾝﾜﾛﾖﾓﾉﾄ", u"ヲンワロヨモノト"},
        {u"ｶﾞｺﾞｻﾞｿﾞﾀﾞﾁﾞﾂﾞﾃﾞﾄﾞﾊﾞﾎﾞ", u"ガゴザゾダヂヅデドバボ"},
        {u"ﾊﾟﾋﾟﾌﾟﾍﾟﾎﾟ", u"パピプペポ"},
        {u"ｳﾞ", u"ヴ"},
        {u"ﾞ", u"゛"},
        {u"ﾟ", u"゜"},
        {u"ｱﾞ", u"ア゛"},
        {u"ｶﾟ", u"カ゜"},
        {u"ﾜﾞ", u"ワ゛"},
        {u"ｶﾞﾞ", u"ガ゛"},
        {u"カﾞ", u"カ゛"},
        {u"ｰ｡｢｣､･", u"ー。「」、・"},
        {u"日本あア　é😀", u"日本あア　é😀"},
        {u"\t\r\n\x7F", u"\t\r\n\x7F"},
    };
    for (const auto& row : table)
        EXPECT_EQ(toWide(row.from), row.to);
}

TEST(TextWidthTest, EveryNarrowKanaHasAWideForm)
{
    for (char16_t c = u'\uFF61'; c <= u'\uFF9F'; ++c)
        EXPECT_TRUE(wideKana(c) >= u'\u3001' && wideKana(c) <= u'\u30FC') << int(c);
}

TEST(TextWidthTest, LowerCaseOfTheScriptsOfTheCodePage)
{
    const Row table[] = {
        {u"ABCXYZabc019", u"abcxyzabc019"},
        {u"ＡＢＺａ", u"ａｂｚａ"},
        {u"ΑΡΣΩαω", u"αρσωαω"},
        {u"АЯЁЖая", u"аяёжая"},
        {u"ⅠⅤⅩⅰ", u"ⅰⅴⅹⅰ"},
        {u"@[`{", u"@[`{"},
        {u"あア日ÉＡ́", u"あア日Éａ́"},
    };
    for (const auto& row : table)
        EXPECT_EQ(lowerCase(row.from), row.to);
}

}
}
