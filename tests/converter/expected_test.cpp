// Every mail file of tests/data/mail that has an expected result in a file of the same
// name plus ".expected": UTF-8, four field lines, an empty line, the text; "====="
// between two mails.
#include "converter/conversion.h"

#include "converter/temp_reader.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(TOLVEK_TEST_DATA) / "mail";
constexpr const char* kExtension = ".expected";

std::vector<std::string> boxes()
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(kFolder))
        if (entry.path().extension() == kExtension) names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

// The reader drops empty lines at the end of a text.
std::string textOf(const ReadMail& mail)
{
    std::string text = mail.text();
    text.resize(text.find_last_not_of('\n') + 1);
    return text;
}

std::string written(const std::vector<ReadMail>& mails)
{
    std::string text;
    for (const ReadMail& mail : mails) {
        text += text.empty() ? "" : "=====\n";
        text += "From: " + mail.from + "\nTo: " + mail.to + "\nSubject: " + mail.subject +
                "\nDate: " + mail.date + "\n\n" + textOf(mail) + "\n";
    }
    return text;
}

class ExpectedTest : public ::testing::TestWithParam<std::string> {};

TEST_P(ExpectedTest, MailsAreWhatTheBoxGives)
{
    const TempFolder folder;
    const Conversion result = convertMailBox(kFolder / GetParam(), folder / "Tolvek.Tmp");
    ASSERT_EQ(result.status, ConversionStatus::Converted);
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    EXPECT_EQ(mails.size(), static_cast<std::size_t>(result.count));
    EXPECT_TRUE(
        std::all_of(mails.begin(), mails.end(), [](const ReadMail& mail) { return mail.ended; }));
    EXPECT_EQ(written(mails), readBytes(kFolder / (GetParam() + kExtension)));
}

std::string caseName(const ::testing::TestParamInfo<std::string>& row)
{
    std::string name = row.param;
    std::replace_if(
        name.begin(), name.end(),
        [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Boxes, ExpectedTest, ::testing::ValuesIn(boxes()), caseName);

}
}
