// Broken copies of the corpus: whatever the input, the temp file keeps its grammar.
#include "converter/conversion.h"
#include "converter/str_change.h"

#include "converter/mutation.h"
#include "converter/temp_reader.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {
namespace {

std::vector<std::string> corpus()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(TOLVEK_TEST_DATA) / "mail"))
        if (entry.path().extension() != ".md" && entry.path().extension() != ".expected")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> files;
    for (const auto& path : paths)
        files.push_back(readBytes(path));
    return files;
}

// Status 0 means: as many complete groups as the count says, no byte that ends the
// file or a text, no record overrun.
void expectGrammar(const std::string& box, const TempFolder& folder)
{
    writeBytes(folder / "box", box);
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    if (result.status != ConversionStatus::Converted) {
        EXPECT_EQ(result.count, 0);
        return;
    }
    const std::string bytes = readBytes(folder / "Tolvek.Tmp");
    for (const char forbidden : {'\0', '\x1A', '\x1B', '\''})
        EXPECT_EQ(bytes.find(forbidden), std::string::npos);
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    ASSERT_EQ(mails.size(), static_cast<std::size_t>(result.count));
    EXPECT_TRUE(
        std::all_of(mails.begin(), mails.end(), [](const ReadMail& mail) { return mail.ended; }));
    for (const std::string& line : ansiLines(bytes))
        EXPECT_LE(line.size(), 4608u);
}

TEST(HostileInputTest, TruncatedAnywhere)
{
    const TempFolder folder;
    for (const std::string& file : corpus())
        for (std::size_t size = 0; size < file.size(); size += file.size() < 200 ? 11 : 61)
            expectGrammar(file.substr(0, size), folder);
}

TEST(HostileInputTest, MutatedAtRandomPlaces)
{
    const TempFolder folder;
    std::mt19937 random(19971126);
    for (int round = 0; round < 8; ++round)
        for (const std::string& file : corpus())
            expectGrammar(mutated(file, random), folder);
}

TEST(HostileInputTest, TextsOfAnyBytesAreDecodedWithinTheRecord)
{
    std::mt19937 random(20030310);
    for (int round = 0; round < 3000; ++round) {
        std::string text(random() % 300, ' ');
        for (char& c : text)
            c = static_cast<char>(random() % 3 == 0 ? "=?BQ\x1b$(B'"[random() % 9] : random());
        const ChangedText changed = strChange(text, 64);
        EXPECT_LE(changed.ansi.size(), 64u);
        EXPECT_LE(changed.length, static_cast<int>(changed.ansi.size()));
    }
}

// Each of these can lead to quadratic time.
TEST(HostileInputTest, EndlessRunsOfBeginningsTakeNoLongerThanTheirLength)
{
    const TempFolder folder;
    const std::string date = "Date: 1 Jan 2000 1:00\n";
    for (const char* piece : {"=?a?B?", "=?a?Q?", "\\\"(<", "((", ",a", "$B", "$B$\""}) {
        const std::string run = repeated(piece, 200000);
        expectGrammar("From: " + run + "\n" + date + "Subject: " + run + "\n\nx\n", folder);
        expectGrammar(date + "\n" + run + "\n", folder);
    }
}

// Lines with which a mail, a head or an enclosed file could begin.
TEST(HostileInputTest, EndlessRunsOfSuchLinesTakeNoLongerThanTheirLength)
{
    const TempFolder folder;
    const std::string head = "From: a@example.com\nDate: 1 Jan 2000 1:00\n";
    for (const char* line : {"From: a\n", "From \n", "\nFrom a\nTo: b\n", "begin 644 a\n", ".\n",
                             "stray\n", "--b--\nFrom \n", "begin 644 a\n!\n", "YQ==\n", "> \n"}) {
        const std::string run = repeated(line, 300000);
        expectGrammar(head + run + "\n" + run, folder);
        expectGrammar("From a\n" + head + "Content-Type: multipart/mixed; boundary=b\n\n" + run,
                      folder);
        expectGrammar(head + "Content-Transfer-Encoding: base64\n\n" + run, folder);
    }
}

TEST(HostileInputTest, PartsWithinPartsWithinPartsEnd)
{
    const TempFolder folder;
    std::string box = "From: a@example.com\nDate: 1 Jan 2000 1:00\n";
    for (int depth = 0; depth < 3000; ++depth)
        box += "Content-Type: multipart/mixed; boundary=b\n\n--b\n";
    expectGrammar(box + "\ntext\n", folder);
}

}
}
