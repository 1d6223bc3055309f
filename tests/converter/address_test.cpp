#include "converter/address.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct Row {
    const char* field;
    const char* name;
    const char* address;
};

TEST(AddressTest, FirstMailboxOfAField)
{
    const Row rows[] = {
        {"Taro <taro@example.com>", "Taro", "taro@example.com"},
        {"taro@example.com (Taro)", "Taro", "taro@example.com"},
        {"taro@example.com", "", "taro@example.com"},
        {"<taro@example.com>", "", "taro@example.com"},
        {"\"Yamada, Taro\" <taro@example.com>, b@example.com", "Yamada, Taro", "taro@example.com"},
        {"\"a \\\"b\\\"\" <t@example.com>", "a \"b\"", "t@example.com"},
        {"t@example.com (a (b) c)", "a (b) c", "t@example.com"},
        {"Yamada, Taro <taro@example.com>", "Taro", "taro@example.com"},
        {"<@relay.example,@b.example:t@example.com>", "", "t@example.com"},
        {"friends: a@example.com, b@example.com;", "", "a@example.com"},
        {"nobody: ;", "", ""},
        {"\xE3\x81\xAF\xE3\x81\xAA", "はな", ""},
        {"taro @ example.com", "", "taro@example.com"},
        {"'Taro' <t@example.com>", "Taro", "t@example.com"},
        {"=?utf-8?B?44Gv44GqIDxoQGV4YW1wbGUuY29tPg==?=", "はな", "h@example.com"},
        {"\"never closed <t@example.com>", "", "neverclosed<t@example.com>"},
        {"t@example.com (=?utf-8?Q?a)b?=)", "a)b", "t@example.com"},
        {"\"=?utf-8?Q?a\"b?=\" <t@example.com>", "a\"b", "t@example.com"},
        {"t@example.com (=?utf-8?Q?ab)", "ab", "t@example.com"},
        {"\"=?utf-8?Q?ab\" <t@example.com>", "ab", "t@example.com"},
        {"(never closed", "never closed", ""},
        {"Taro <t@example.com", "Taro", "t@example.com"},
        {"", "", ""},
    };
    for (const Row& row : rows) {
        const Mailbox box = firstMailbox(row.field);
        EXPECT_EQ(toUtf8(box.name), row.name) << row.field;
        EXPECT_EQ(toUtf8(box.address), row.address) << row.field;
    }
}

TEST(AddressTest, ValueIsInAFormThatTheReaderTakesApart)
{
    EXPECT_EQ(mailboxValue({u"はな", u"h@example.jp"}), u"h@example.jp (はな)");
    EXPECT_EQ(mailboxValue({u"a(b)<c>", u"h@example.jp"}), u"h@example.jp (a（b）＜c＞)");
    EXPECT_EQ(mailboxValue({u"", u"h@example.jp"}), u"h@example.jp");
    EXPECT_EQ(mailboxValue({u"h@example.jp", u"h@example.jp"}), u"h@example.jp");
    EXPECT_EQ(mailboxValue({u"はな", u"hana@local"}), u"はな <hana@local>");
    EXPECT_EQ(mailboxValue({u"x@y.jp", u"hana@local"}), u"x@y・jp <hana@local>");
    EXPECT_EQ(mailboxValue({u"x＠y．jp", u"hana@local"}), u"x＠y・jp <hana@local>");
    EXPECT_EQ(mailboxValue({u"はな", u"a(b)<c>@example.jp"}), u"a（b）＜c＞@example.jp (はな)");
    EXPECT_EQ(mailboxValue({u"", u"hana"}), u"<hana>");
    EXPECT_EQ(mailboxValue({u"はな", u""}), u"はな");
    EXPECT_EQ(mailboxValue({}), u"");
}

}
}
