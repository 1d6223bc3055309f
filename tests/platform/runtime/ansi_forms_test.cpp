#include "platform/runtime/ansi_forms.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(AnsiFormsTest, WhatMeansACharacterOfTheCodePageBecomesThatCharacter)
{
    const struct {
        Text brought, form;
    } table[] = {
        {u"", u""},
        {u"\u301C\u2016\u2212\u2014\u203E", u"\uFF5E\u2225\uFF0D\u2015\uFFE3"},
        {u"\u00A2\u00A3\u00AC\u00A5\u00C5", u"\uFFE0\uFFE1\uFFE2\uFFE5\u212B"},
        {u"か\u3099は\u309Aウ\u3099", u"がぱヴ"},
        {u"A\u030A", u"\u212B"},
        {u"\u2126\u212A\u2329", u"ΩK〈"},
        {u"\uFA30\U0002F805", u"侮侮"},
        {u"a\u00A0b\u2003c", u"a b c"},
        {u"a\u2011b\u2013c\u2022\u00B7", u"a-b-c・・"},
        {u"a\u200B\uFE0Fb\uFEFF", u"ab"},
    };
    for (const auto& row : table)
        EXPECT_EQ(ansiForms(row.brought), row.form) << toUtf8(row.brought);
}

TEST(AnsiFormsTest, WhatTheCodePageHasStaysThoughCompositionWouldChangeIt)
{
    const Text own = u"\u212B\uFA19\uFA1B\uF929ｶﾞ　＠①㈱髙'\t\r\n";
    EXPECT_EQ(ansiForms(own), own);
}

TEST(AnsiFormsTest, WhatHasNoFormStaysForTheCallerToSee)
{
    const Text without = Text(u"한\U0001F431\u3099") + char16_t(0xD83D);
    EXPECT_EQ(ansiForms(without), without);
}

}
}
