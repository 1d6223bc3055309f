#include "demo/big_box.h"

#include "converter/conversion.h"
#include "converter/temp_reader.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvek::test {
namespace {

TEST(BigBoxTest, HoldsThatManyMailsOfSomeTwoKilobytes)
{
    const TempFolder folder;
    sample::makeBigBox(folder / "big", 1000);
    const auto size = std::filesystem::file_size(folder / "big");
    EXPECT_GT(size, 1500u * 1000u);
    EXPECT_LT(size, 2700u * 1000u);
    const Conversion result = convertMailBox(folder / "big", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, 1000);
    std::set<std::string> senders, dates;
    for (const ReadMail& mail : readTemp(folder / "Tolvek.Tmp")) {
        senders.insert(mail.from);
        dates.insert(mail.date);
    }
    EXPECT_EQ(senders.size(), 320u);
    EXPECT_EQ(dates.size(), 1000u);
}

TEST(BigBoxTest, IsTheSameEachTime)
{
    const TempFolder folder;
    sample::makeBigBox(folder / "one", 50);
    sample::makeBigBox(folder / "two", 50);
    EXPECT_EQ(readBytes(folder / "one"), readBytes(folder / "two"));
}

}
}
