#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(RuntimeErrorTest, CarriesItsNumberAndThePlatformsText)
{
    const RuntimeError error(13);
    EXPECT_EQ(error.number(), 13);
    EXPECT_EQ(error.description(), u"型が一致しません。");
    EXPECT_STREQ(error.what(), "13: 型が一致しません。");
}

TEST(RuntimeErrorTest, KeepsADescriptionGivenByTheCaller)
{
    const RuntimeError error(3343, u"別の説明", nullptr);
    EXPECT_EQ(error.number(), 3343);
    EXPECT_EQ(error.description(), u"別の説明");
}

TEST(RuntimeErrorTest, FillsTheGapWithTheName)
{
    struct {
        int number;
        std::u16string name, text;
    } const table[] = {
        {3024, u"a.mdb", u"ファイル 'a.mdb' が見つかりませんでした。"},
        {3061, u"1", u"パラメータが少なすぎます。1 を指定してください。"},
        {3075, u"x='o'brien'", u"クエリ式 'x='o'brien'' の 構文エラー : 演算子がありません。"},
        {3315, u"f", u"フィールド 'f' には長さ 0 の文字列を指定できません。"},
        {3343, u"a%b", u"データベースの形式 'a%b' を認識できません。"},
        {53, u"libTolvek.so", u"ファイルが見つかりません。: libTolvek.so"},
        {75, u"ignored", u"パス名が無効です。"},
    };
    for (const auto& row : table)
        EXPECT_EQ(errorText(row.number, row.name), row.text) << row.number;
}

TEST(RuntimeErrorTest, KnowsEveryNumberOfThePlatform)
{
    for (const int number :
         {5,    6,    7,    9,    13,   51,   52,   53,   54,   55,   58,   61,   62,    67,   70,
          75,   76,   91,   94,   340,  380,  429,  3021, 3022, 3024, 3034, 3041, 3061,  3075, 3078,
          3134, 3142, 3163, 3167, 3204, 3265, 3315, 3343, 3349, 3356, 3420, 3464, 30009, 30010}) {
        const std::u16string text = errorText(number);
        ASSERT_FALSE(text.empty()) << number;
        EXPECT_EQ(text.back(), u'。') << number;
        EXPECT_EQ(text.find(u'%'), text.npos) << number;
    }
}

TEST(RuntimeErrorTest, AnUnknownNumberHasNoText)
{
    EXPECT_EQ(errorText(0), u"");
    EXPECT_EQ(errorText(14), u"");
    EXPECT_EQ(errorText(99999), u"");
}

TEST(RuntimeErrorTest, GivesFailedFileOperationsTheirNumbers)
{
    struct {
        std::errc code;
        int number;
    } const table[] = {
        {std::errc::no_such_file_or_directory, 53},
        {std::errc::not_a_directory, 76},
        {std::errc::file_exists, 58},
        {std::errc::permission_denied, 75},
        {std::errc::read_only_file_system, 75},
        {std::errc::no_space_on_device, 61},
        {std::errc::device_or_resource_busy, 70},
        {std::errc::text_file_busy, 70},
        {std::errc::io_error, 57},
        {std::errc::no_such_device, 57},
        {std::errc::no_such_device_or_address, 57},
        {std::errc::is_a_directory, 75},
    };
    for (const auto& row : table)
        EXPECT_EQ(fileError(std::make_error_code(row.code)).number(), row.number);
}

TEST(RuntimeErrorTest, SystemCodesCountAsTheirGenericOnes)
{
    EXPECT_EQ(fileError(std::error_code(2, std::system_category())).number(), 53);
}

}
}
