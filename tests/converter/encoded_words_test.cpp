#include "converter/encoded_words.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(EncodedWordsTest, AreFoundWhereverTheyStand)
{
    const std::pair<TextView, TextView> rows[] = {
        {u"=?utf-8?B?44GC?=", u"あ"},
        {u"a =?utf-8?B?44GC?= b", u"a あ b"},
        {u"\"=?utf-8?B?44GC?=\"(=?utf-8?b?44GE?=)", u"\"あ\"(い)"},
        {u"=?utf-8?B?44GC?= \t =?utf-8?B?44GE?=", u"あい"},
        {u"=?utf-8?B?44GC?==?utf-8?B?44GE?=", u"あい"},
        {u"=?utf-8?B?44GC?= =?utf-8?Q?_x?=", u"あ x"},
        {u"=?utf-8?B?"
         u"?=",
         u""},
        {u"=?utf-8?X?44GC?=", u"=?utf-8?X?44GC?="},
        {u"=?utf-8?", u"=?utf-8?"},
        {u"=?", u"=?"},
        {u"1=?2", u"1=?2"},
        {u"=?utf-8?Q?=E3=81=82", u"あ"},
        {u"=?utf-8?B?44GC and", u"あ and"},
        {u"=?utf-8?B?44GC =?utf-8?B?44GE?=", u"あい"},
    };
    for (const auto& [given, expected] : rows)
        EXPECT_EQ(decodeEncodedWords(given), expected);
}

TEST(EncodedWordsTest, FoldsOfARawValueAreBlanks)
{
    EXPECT_EQ(unfoldedText("a\n \t b\n c"), u"a b c");
    EXPECT_EQ(unfoldedText("\x1b$B$\"\n b"), u"あ b");
}

}
}
