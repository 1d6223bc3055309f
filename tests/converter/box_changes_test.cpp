// Boxes that another program writes to while they are read, and boxes damaged by a
// crash.
#include "converter/box_changes.h"
#include "platform/system/test_hooks.h"

#include "converter/conversion.h"
#include "converter/temp_reader.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tolvek::test {
namespace {

using Kind = BoxChanges::Kind;

std::string mailOf(const std::string& subject)
{
    return "From a@example.com Tue Feb 15 10:11:12 2000\nFrom: a@example.com\nSubject: " + subject +
           "\nDate: Tue, 15 Feb 2000 10:11:12 +0900\n\nletter\n\n";
}

class BoxChangesTest : public ::testing::Test {
protected:
    void TearDown() override { hooks::setFileProbe({}); }

    std::filesystem::path box() const { return folder / "box"; }
    void given(const std::string& bytes) const { writeBytes(box(), bytes); }
    void append(const std::string& bytes) const
    {
        std::ofstream(box(), std::ios::binary | std::ios::app) << bytes;
    }
    // Runs at the n-th read of the box, counted from 1.
    void atReading(int n, std::function<void()> change)
    {
        hooks::setFileProbe([this, n, change, seen = 0](FileOperation operation,
                                                        const std::filesystem::path& path) mutable {
            if (operation == FileOperation::Read && path == box() && ++seen == n) change();
        });
    }
    std::vector<std::string> subjectsOf(const Conversion& conversion)
    {
        hooks::setFileProbe({});
        std::vector<std::string> subjects;
        if (conversion.status != ConversionStatus::Converted) return {"not converted"};
        for (const ReadMail& mail : readTemp(folder / "Tolvek.Tmp"))
            subjects.push_back(mail.subject);
        EXPECT_EQ(static_cast<int>(subjects.size()), conversion.count);
        return subjects;
    }
    std::vector<std::string> converted()
    {
        return subjectsOf(convertMailBox(box(), folder / "Tolvek.Tmp"));
    }

    TempFolder folder;
};

using Subjects = std::vector<std::string>;

TEST_F(BoxChangesTest, TellsGrowthFromAnyOtherChange)
{
    given("12345");
    const BoxChanges changes(box());
    EXPECT_EQ(changes.kind(), Kind::None);
    append("6");
    EXPECT_EQ(changes.kind(), Kind::Grown);
    given("1234");
    EXPECT_EQ(changes.kind(), Kind::Rewritten);
    given("abcde");
    std::filesystem::last_write_time(box(), std::filesystem::file_time_type::clock::now() +
                                                std::chrono::hours(1));
    EXPECT_EQ(changes.kind(), Kind::Rewritten) << "as long as before, but of another time";
    std::filesystem::remove(box());
    EXPECT_NE(changes.kind(), Kind::None);
}

TEST_F(BoxChangesTest, TheLastMailOfABoxThatGrowsIsLeftForTheNextRead)
{
    const std::string three = mailOf("three");
    for (const int reading : {1, 2, 3, 4}) {
        given(mailOf("one") + mailOf("two") + three.substr(0, 120));
        atReading(reading, [&] { append(three.substr(120)); });
        EXPECT_EQ(converted(), (Subjects{"one", "two"})) << "reading " << reading;
        EXPECT_EQ(converted(), (Subjects{"one", "two", "three"}));
    }
}

TEST_F(BoxChangesTest, ASingleMailThatGrowsIsLeftAsAWhole)
{
    given("Subject: one\nDate: Tue, 15 Feb 2000 10:11:12 +0900\n\nhalf a");
    atReading(2, [&] { append(" letter\n"); });
    EXPECT_EQ(converted(), Subjects{});
    EXPECT_EQ(converted(), Subjects{"one"});
}

TEST_F(BoxChangesTest, ABoxThatIsRewrittenWhileItIsReadIsReadAnew)
{
    given(mailOf("one") + mailOf("two"));
    atReading(2, [&] { given(mailOf("two")); });
    EXPECT_EQ(converted(), Subjects{"two"});
}

TEST_F(BoxChangesTest, ABoxThatIsRewrittenAgainAndAgainIsLeft)
{
    given(mailOf("one") + mailOf("two"));
    int hour = 0;
    hooks::setFileProbe([&](FileOperation operation, const std::filesystem::path& path) {
        if (operation == FileOperation::Read && path == box())
            std::filesystem::last_write_time(box(), std::filesystem::file_time_type::clock::now() +
                                                        std::chrono::hours(++hour));
    });
    const Conversion conversion = convertMailBox(box(), folder / "Tolvek.Tmp");
    EXPECT_EQ(conversion.status, ConversionStatus::Changing);
    EXPECT_EQ(conversion.count, 0);
    EXPECT_FALSE(std::filesystem::exists(folder / "Tolvek.Tmp"));
}

TEST_F(BoxChangesTest, ATailOfNulsIsNoMail)
{
    for (const std::size_t size : {1u, 7u, 512u, 70000u, 3u << 20}) {
        given(mailOf("one") + mailOf("two"));
        ASSERT_EQ(converted(), (Subjects{"one", "two"}));
        const std::string sound = readBytes(folder / "Tolvek.Tmp");
        append(std::string(size, '\0'));
        converted();
        EXPECT_EQ(readBytes(folder / "Tolvek.Tmp"), sound) << size;
    }
}

// The program continued to write after the crash.
TEST_F(BoxChangesTest, AMailAfterAGapOfNulsIsFound)
{
    for (const std::size_t size : {8u, 512u, 70000u, 3u << 20}) {
        for (const std::string& first : {mailOf("one"), mailOf("one") + "half a li"}) {
            given(first + std::string(size, '\0') + mailOf("two"));
            EXPECT_EQ(converted(), (Subjects{"one", "two"})) << size;
        }
    }
}

TEST_F(BoxChangesTest, WhatEveryBoxWouldMeetIsHandedOn)
{
    given(mailOf("one"));
    const struct {
        FileOperation failing;
        const char* file;
        std::errc code;
        bool ofEveryBox;
    } cases[] = {
        {FileOperation::Open, "box", std::errc::permission_denied, false},
        {FileOperation::Open, "box", std::errc::io_error, true},
        {FileOperation::Read, "box", std::errc::io_error, true},
        {FileOperation::Create, "Tolvek.Tmp.part", std::errc::permission_denied, true},
        {FileOperation::Write, "Tolvek.Tmp.part", std::errc::no_space_on_device, true},
        {FileOperation::Replace, "Tolvek.Tmp", std::errc::io_error, true},
    };
    for (const auto& each : cases) {
        hooks::setFileProbe([&](FileOperation operation, const std::filesystem::path& path) {
            if (operation == each.failing && path.filename() == each.file)
                throw std::system_error(std::make_error_code(each.code));
        });
        const Conversion conversion = convertMailBox(box(), folder / "Tolvek.Tmp");
        EXPECT_NE(conversion.status, ConversionStatus::Converted);
        EXPECT_EQ(conversion.failure == each.code, each.ofEveryBox) << each.file;
        EXPECT_EQ(!conversion.failure, !each.ofEveryBox) << each.file;
    }
}

}
}
