// Every file of tests/data/mail with its expected result.
#include "converter/conversion.h"

#include "converter/temp_reader.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvek::test {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(TOLVEK_TEST_DATA) / "mail";
const std::string kFrom = "taro@example.com (Taro)";
const std::string kTo = "hana@example.jp";
const std::string kDate = "Tue, 15 Feb 2000 10:11:12 +0900";
const std::string kLetter = "こんにちは、はなさん。\nモモは元気？";

struct Expected {
    const char* file;
    std::string from, to, subject, date, text;
};

void PrintTo(const Expected& expected, std::ostream* out)
{
    *out << expected.file;
}

Expected body(const char* file, std::string text)
{
    return {file, kFrom, kTo, "test", kDate, std::move(text)};
}
Expected subject(const char* file, std::string text)
{
    return {file, kFrom, kTo, std::move(text), kDate, "x"};
}
Expected sender(const char* file, std::string from)
{
    return {file, std::move(from), kTo, "test", kDate, "x"};
}
Expected date(const char* file, std::string text)
{
    return {file, kFrom, kTo, "test", std::move(text), "x"};
}

const std::vector<Expected>& table()
{
    static const std::vector<Expected> rows{
        body("jis_declared.eml", kLetter),
        body("jis_undeclared.eml", kLetter),
        body("sjis_declared.eml", kLetter),
        body("sjis_undeclared.eml", kLetter),
        body("euc_declared.eml", kLetter),
        body("euc_undeclared.eml", kLetter),
        body("utf8_declared.eml", kLetter),
        body("utf8_undeclared.eml", kLetter),
        body("wrong_label.eml", kLetter),
        body("wrong_label_jis.eml", kLetter),
        body("unknown_label.eml", kLetter),
        body("base64_body.eml", kLetter),
        body("base64_unpadded.eml", "モモより。"),
        body("quoted_printable.eml", "こんにちは 1+1=2 =ZZ\nend"),
        body("jis_kana_escape.eml", "ﾓﾓ ok"),
        body("jis_shift_kana.eml", "だよﾓﾓ ok"),
        body("jis_bare_kana.eml", "だよﾓﾓ ok"),
        body("jis_row13.eml", "①㈱髙 ok"),
        body("jis_roman.eml", "\\100~円 end"),
        body("jis_roman_h.eml", "円end"),
        body("jis_78.eml", "円"),
        body("jis_no_reset.eml", "はい\nASCII again"),
        body("jis_stripped.eml", "きょうは晴れ desu $BASIC (B)"),
        body("jis_0212.eml", "〓です"),
        body("jis_half_pair.eml", "は〓\nok"),
        body("utf8_twins.eml", "～∥－￠￡￢ ― ￥ 〓〓 〓 が ㈱髙①"),
        body("utf8_controls.eml", "a b c de\nf’g"),
        subject("words_joined.eml", "日本語です"),
        subject("words_split_character.eml", "日本語"),
        subject("words_two_charsets.eml", "日本です and ね"),
        subject("words_no_padding.eml", "さくら!"),
        subject("words_no_end.eml", "さくら next"),
        subject("words_glued.eml", "Re:あ b cend"),
        subject("words_q_blanks.eml", "あ and b"),
        subject("words_language.eml", "あ"),
        subject("words_cp932.eml", "①髙"),
        subject("words_jis_short.eml", "桜花"),
        sender("name_quoted_word.eml", "hanako@example.org (花子)"),
        sender("name_comment_word.eml", "hanako@example.org (花子)"),
        {"name_raw_jis.eml", "sakura@example.org (山口桜)", kTo, "桜が咲いた", kDate, "x"},
        {"name_raw_sjis.eml", "omote@example.org (表 太郎)", kTo, "能登ソース", kDate, "x"},
        sender("name_brackets.eml", "taro@example.com (Taro （home） ＜1＞)"),
        sender("name_comma_word.eml", "taro@example.com (Yamada, Taro)"),
        sender("name_is_address.eml", "taro@example.com"),
        sender("address_docomo.eml", "a..b.@docomo.example.jp"),
        {"address_local.eml", "root", "Ann B. <ann@localhost>", "test", kDate, "x"},
        {"address_group.eml", "tom@example.com (O’Neil, Tom)", "", "test", kDate, "x"},
        {"headers_missing.eml", "back@example.com", "friend@example.org", "", kDate, "x"},
        subject("subject_folded.eml", "one two three"),
        subject("subject_double_quote.eml", "it’s \"so\" | <End>"),
        body("multipart_text_first.eml", "本文\n（添付: 名前なし、image/gif、6 バイト）"),
        body("multipart_unclosed.eml", "html\n本文"),
        body("multipart_nested.eml", "inner text"),
        body("multipart_html_only.eml", "html"),
        body("multipart_no_text.eml",
             "（本文はありません）\n（添付: 名前なし、image/gif、6 バイト）"),
        body("multipart_without_parts.eml", "never came"),
        body("attachment_first.eml", "the letter\n（添付: a.txt、text/plain、8 バイト）"),
        body("no_empty_line.eml", "body at once, no empty line\nsecond"),
        body("end_mark_in_text.eml", "before\n <End>\n <End>x\nFrom here\nTo there\n<Start>"),
        body("line_ends_mixed.eml", "a\nb\nc\nd\ne"),
        body("empty_body.eml", "（本文はありません）"),
        date("date_no_day_name.eml", kDate),
        date("date_wrong_day_name.eml", kDate),
        date("date_two_digits.eml", kDate),
        date("date_ninety_seven.eml", "Sat, 15 Feb 1997 10:11:12"),
        date("date_three_digits.eml", kDate),
        date("date_no_seconds.eml", "Tue, 15 Feb 2000 09:05:00"),
        date("date_gmt_plus.eml", kDate),
        date("date_quoted_zone.eml", kDate),
        date("date_ctime.eml", "Tue, 15 Feb 2000 10:11:12"),
        date("date_ctime_zone.eml", kDate),
        date("date_slashes.eml", "Mon, 10 Mar 2003 07:08:09"),
        date("date_iso.eml", "Mon, 10 Mar 2003 07:08:09 +0900"),
        date("date_dashes.eml", "Tue, 15 Feb 2000 10:11:00"),
        date("date_raw_comment.eml", kDate),
        date("date_afternoon.eml", "Tue, 15 Feb 2000 13:11:12"),
        date("date_no_time.eml", "Tue, 15 Feb 2000 00:00:00"),
        date("date_impossible.eml", "Wed, 01 Mar 2000 03:04:05 +0900"),
        {"date_none.eml", kFrom, kTo, "test", "", ""},
        {"mbox_no_date_line.mbox", kFrom, kTo, "test", kDate, "x"},
        {"mbox_mark.mbox", kFrom, kTo, "test", kDate, "x"},
    };
    return rows;
}

class CorpusTest : public ::testing::TestWithParam<Expected> {};

TEST_P(CorpusTest, BecomesOneReadableMail)
{
    const TempFolder folder;
    const Conversion result = convertMailBox(kFolder / GetParam().file, folder / "Tolvek.Tmp");
    ASSERT_EQ(result.status, ConversionStatus::Converted);
    ASSERT_EQ(result.count, 1);
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    ASSERT_EQ(mails.size(), 1u);
    EXPECT_TRUE(mails[0].ended);
    EXPECT_EQ(mails[0].from, GetParam().from);
    EXPECT_EQ(mails[0].to, GetParam().to);
    EXPECT_EQ(mails[0].subject, GetParam().subject);
    EXPECT_EQ(mails[0].date, GetParam().date);
    EXPECT_EQ(mails[0].text(), GetParam().text);
}

std::string caseName(const ::testing::TestParamInfo<Expected>& row)
{
    std::string name = row.param.file;
    return name.substr(0, name.find('.'));
}

INSTANTIATE_TEST_SUITE_P(Mails, CorpusTest, ::testing::ValuesIn(table()), caseName);

TEST(CorpusMboxTest, SplitsOnlyAtSeparatorsThatFollowAnEmptyLineAndEndInADate)
{
    const TempFolder folder;
    const Conversion result = convertMailBox(kFolder / "mbox_three.mbox", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.count, 3);
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    ASSERT_EQ(mails.size(), 3u);
    EXPECT_EQ(mails[0].text(), "one\n\nFrom here on it rains.\nFrom stuffed\n>From twice");
    EXPECT_EQ(mails[1].text(), "two\nFrom x@example.com Tue Feb 15 10:11:12 2000\nstill two");
    EXPECT_EQ(mails[2].subject, "three");
    EXPECT_EQ(mails[2].text(), "three");
}

TEST(CorpusMboxTest, SeparatorGivesDateAndSenderWhereTheMailHasNone)
{
    const TempFolder folder;
    convertMailBox(kFolder / "mbox_dates.mbox", folder / "Tolvek.Tmp");
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    ASSERT_EQ(mails.size(), 2u);
    EXPECT_EQ(mails[0].from, "taro@example.com");
    EXPECT_EQ(mails[0].date, "Tue, 15 Feb 2000 10:11:12");
    EXPECT_EQ(mails[1].date, "Wed, 16 Feb 2000 01:02:00 +0900");
}

TEST(CorpusBrokenTest, WhatIsNoMailIsRefusedAndLeavesNoTempFile)
{
    for (const char* file :
         {"broken_binary.ppm", "broken_nul_head.ppm", "broken_text.ppm", "broken_other_fields.ppm",
          "broken_pseudo_from.ppm", "", "missing.ppm"}) {
        const TempFolder folder;
        const Conversion result = convertMailBox(kFolder / file, folder / "Tolvek.Tmp");
        EXPECT_EQ(result.status, ConversionStatus::Unreadable) << file;
        EXPECT_EQ(result.count, 0) << file;
        EXPECT_TRUE(std::filesystem::is_empty(folder.path())) << file;
    }
}

TEST(CorpusBrokenTest, EmptyBoxIsReadAndHoldsNothing)
{
    const TempFolder folder;
    const Conversion result = convertMailBox(kFolder / "empty.ppm", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, 0);
    EXPECT_EQ(readBytes(folder / "Tolvek.Tmp"), "<Start>\r\n");
}

TEST(CorpusTableTest, NamesEveryMessageFileOfTheFolder)
{
    std::set<std::string> named{"mbox_three.mbox", "mbox_dates.mbox"};
    for (const Expected& row : table())
        named.insert(row.file);
    for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
        const auto path = entry.path();
        const bool isMail = path.extension() == ".eml" || path.extension() == ".mbox";
        const bool expected = std::filesystem::exists(path.string() + ".expected");
        EXPECT_TRUE(!isMail || expected || named.contains(path.filename().string())) << path;
    }
}

}
}
