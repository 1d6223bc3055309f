// Whole boxes: size, memory, and a temp file that is complete or absent.
#include "converter/conversion.h"
#include "platform/system/test_hooks.h"

#include "converter/temp_reader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

namespace tolvek::test {
namespace {

std::string mail(int number)
{
    const std::string digits = std::to_string(number);
    return "From a@example.com Tue Feb 15 10:11:12 2000\nFrom: a" + digits +
           "@example.com\nTo: hana@example.jp\nSubject: no. " + digits +
           "\nDate: Tue, 15 Feb 2000 10:11:12 +0900\n\nletter " + digits + "\n\n";
}

void writeBox(const std::filesystem::path& path, int count)
{
    std::ofstream box(path, std::ios::binary);
    for (int number = 1; number <= count; ++number)
        box << mail(number);
}

// The address sanitizer keeps freed memory, up to 256 MB.
#if defined(__SANITIZE_ADDRESS__)
constexpr long kGrowthBound = 400 * 1024;
#else
constexpr long kGrowthBound = 2048;
#endif

long memoryInKilobytes()
{
    std::ifstream status("/proc/self/status");
    std::string word;
    while (status >> word)
        if (word == "VmRSS:") break;
    long size = 0;
    status >> size;
    return size;
}

TEST(ConversionTest, ThirtyThousandMailsPassThroughWithoutBeingHeld)
{
    const TempFolder folder;
    writeBox(folder / "big", 30000);
    writeBox(folder / "small", 300);
    convertMailBox(folder / "small", folder / "Tolvek.Tmp");
    const long before = memoryInKilobytes();
    const Conversion result = convertMailBox(folder / "big", folder / "Tolvek.Tmp");
    const long grown = memoryInKilobytes() - before;
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, 30000);
    EXPECT_EQ(readTemp(folder / "Tolvek.Tmp").back().subject, "no. 30000");
    EXPECT_LT(grown, kGrowthBound);
}

TEST(ConversionTest, MoreMailsThanTheCountCanTellAreAllWritten)
{
    const TempFolder folder;
    writeBox(folder / "box", 32770);
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, 32767);
    EXPECT_EQ(result.mails, 32770);
    const auto mails = readTemp(folder / "Tolvek.Tmp");
    ASSERT_EQ(mails.size(), 32770u);
    EXPECT_EQ(mails.back().subject, "no. 32770");
}

TEST(Conversion, AMailWithoutADateIsNamedByItsFirstHeaderLines)
{
    const TempFolder folder;
    writeBytes(folder / "box",
               "From - \nX-A: 1\nX-B: 2\nX-C: 3\n folded\nX-D: 4\nX-E: 5\nX-F: 6\n"
               "Subject: =?utf-8?B?5qGc?=\nFrom: a@example.com\nDate: soon\n\nletter\n");
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.count, 1);
    EXPECT_EQ(result.mails, 1);
    ASSERT_EQ(result.leftOut.size(), 1u);
    EXPECT_EQ(result.leftOut.front().why, LeftOut::Why::NoDate);
    EXPECT_EQ(result.leftOut.front().what,
              "X-A: 1\nX-B: 2\nX-C: 3 folded\nX-D: 4\nX-E: 5\nSubject: 桜\n"
              "From: a@example.com\nDate: soon");
}

TEST(Conversion, ABoxThatIsNotThereIsToldFromOneThatIsNoBox)
{
    const TempFolder folder;
    const Conversion missing = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    ASSERT_EQ(missing.leftOut.size(), 1u);
    EXPECT_EQ(missing.leftOut.front().why, LeftOut::Why::NothingThere);
    writeBytes(folder / "box", "no mail");
    const Conversion strange = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    EXPECT_EQ(strange.status, ConversionStatus::Unreadable);
    EXPECT_TRUE(strange.leftOut.empty());
}

std::string message(const std::string& subject, const std::string& date)
{
    return "From: a@example.com\nTo: hana@example.jp\nSubject: " + subject + "\n" +
           (date.empty() ? "" : "Date: " + date + "\n") + "\nletter\n";
}

std::string subjectsOf(const std::filesystem::path& tempFile)
{
    std::string subjects;
    for (const ReadMail& mail : readTemp(tempFile))
        subjects += mail.subject;
    return subjects;
}

TEST(ConversionFolderTest, GivesItsMessagesByDateThenByName)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "box.ppm");
    writeBytes(folder / "box.ppm/a.eml", message("3", "3 Jan 2000 1:00"));
    writeBytes(folder / "box.ppm/c.EML", message("2", "2 Jan 2000 1:00"));
    writeBytes(folder / "box.ppm/b.eml", message("1", "2 Jan 2000 1:00"));
    writeBytes(folder / "box.ppm/d.eml", "no mail at all");
    writeBytes(folder / "box.ppm/e.txt", message("x", "1 Jan 2000 1:00"));
    const Conversion result = convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    EXPECT_EQ(result.count, 3);
    EXPECT_EQ(result.mails, 3);
    ASSERT_EQ(result.leftOut.size(), 1u);
    EXPECT_EQ(result.leftOut.front().why, LeftOut::Why::UnreadableFile);
    EXPECT_EQ(result.leftOut.front().what, "d.eml");
    EXPECT_EQ(subjectsOf(folder / "Tolvek.Tmp"), "123");
}

TEST(ConversionFolderTest, MayBeAMaildirUnderTheBareName)
{
    const TempFolder folder;
    for (const char* part : {"box", "box/cur", "box/new", "box/tmp"})
        std::filesystem::create_directory(folder / part);
    writeBytes(folder / "box/cur/1:2,S", message("2", "2 Jan 2000 1:00"));
    writeBytes(folder / "box/new/2", message("1", "1 Jan 2000 1:00"));
    writeBytes(folder / "box/tmp/3", message("x", "1 Jan 2000 1:00"));
    EXPECT_EQ(convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp").count, 2);
    EXPECT_EQ(subjectsOf(folder / "Tolvek.Tmp"), "12");
}

TEST(ConversionFolderTest, MessageWithoutADateHasItsFiles)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "box.ppm");
    writeBytes(folder / "box.ppm/a.eml", message("1", ""));
    using namespace std::chrono;
    std::filesystem::last_write_time(folder / "box.ppm/a.eml",
                                     file_clock::from_sys(sys_days(2003y / March / 10) + 43200s));
    convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp");
    EXPECT_NE(readTemp(folder / "Tolvek.Tmp").at(0).date.find("Mar 2003"), std::string::npos);
    convertMailBox(folder / "box.ppm/a.eml", folder / "Tolvek.Tmp");
    EXPECT_EQ(readTemp(folder / "Tolvek.Tmp").at(0).date, "");
}

TEST(ConversionFolderTest, WithoutMessagesIsNoBox)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "box.ppm");
    EXPECT_EQ(convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp").status,
              ConversionStatus::Unreadable);
    std::filesystem::create_directory(folder / "box.ppm/cur");
    EXPECT_EQ(convertMailBox(folder / "box.ppm", folder / "Tolvek.Tmp").status,
              ConversionStatus::Converted);
    writeBytes(folder / "a.eml", message("1", ""));
    EXPECT_EQ(convertMailBox(folder.path() / "", folder / "x").status,
              ConversionStatus::Unreadable);
}

class ConversionDiskTest : public ::testing::TestWithParam<FileOperation> {
protected:
    void TearDown() override { hooks::setFileProbe({}); }
};

TEST_P(ConversionDiskTest, OldTempFileStaysAndNoSideFileIsLeft)
{
    const TempFolder folder;
    writeBox(folder / "box", 3);
    writeBytes(folder / "Tolvek.Tmp", "old");
    hooks::setFileProbe([](FileOperation operation, const std::filesystem::path&) {
        if (operation == GetParam())
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    hooks::setFileProbe({});
    EXPECT_EQ(result.status, ConversionStatus::Failed);
    EXPECT_EQ(result.count, 0);
    EXPECT_EQ(readBytes(folder / "Tolvek.Tmp"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

INSTANTIATE_TEST_SUITE_P(Operations, ConversionDiskTest,
                         ::testing::Values(FileOperation::Open, FileOperation::Read,
                                           FileOperation::Create, FileOperation::Write,
                                           FileOperation::Flush, FileOperation::Replace));

std::string written(const TempMail& mail)
{
    const TempFolder folder;
    TempFile temp(folder / "Tolvek.Tmp");
    writeMail(temp, mail);
    temp.commit();
    return readBytes(folder / "Tolvek.Tmp");
}

TEST(ConversionTest, GroupHasOneSeparatorAndNoBlankBehindALabel)
{
    TempMail group;
    group.from = u"a@example.com (A)";
    group.to = u" b@example.com ";
    group.subject = u"It's 桜";
    group.date = "Tue, 15 Feb 2000 10:11:12";
    group.lines = "text\n";
    EXPECT_EQ(utf8OfAnsi(written(group)),
              "From:a@example.com (A)\r\nTo:b@example.com\r\nSubject:It’s 桜\r\n"
              "Date:Tue, 15 Feb 2000 10:11:12\r\nMail:\r\ntext\r\n<End>\r\n");
}

TEST(ConversionTest, EndlessSubjectFitsTheTextRecord)
{
    TempMail group;
    group.subject = Text(10000, u'桜');
    const auto lines = ansiLines(written(group));
    EXPECT_EQ(lines[2].size(), 8u + 4000u);
}

}
}
