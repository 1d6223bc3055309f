#include "app/read_log.h"

#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

BoxRecord oddBox()
{
    BoxRecord box;
    box.box = u"受信フォルダ/受信メール.ppm";
    box.held = 12;
    box.stored = 3;
    box.known = 2;
    box.keptOut = {{u"広告: 1", 2}, {u"知らせ", 1}};
    box.noDate = {2, {u"From: a\nSubject: one", u"From: b\nSubject: two"}};
    box.noText = {1, {u"From: c"}};
    box.failed = {0, {}};
    box.growing = {1, {u"From: d"}};
    box.files = {1, {u"e.eml"}};
    return box;
}

BoxRecord missingBox()
{
    BoxRecord box;
    box.box = u"受信フォルダ/黒の引出し.ppm";
    box.failure = u"状態 1（箱がありません）";
    return box;
}

TEST(ReadLog, SaysWhatBecameOfEveryMail)
{
    EXPECT_EQ(toUtf8(readLogText({u"2000/02/15 10:11:12", {oddBox(), missingBox()}})),
              "■ 2000/02/15 10:11:12\r\n"
              "● 受信フォルダ/受信メール.ppm\r\n"
              "  箱のメール: 12\r\n"
              "  新しく保存: 3\r\n"
              "  保存済み: 2\r\n"
              "  条件で除外: 3\r\n"
              "    - 広告: 1: 2\r\n"
              "    - 知らせ: 1\r\n"
              "  日付なし: 2\r\n"
              "    - From: a\r\n"
              "      Subject: one\r\n"
              "    - From: b\r\n"
              "      Subject: two\r\n"
              "  本文なし: 1\r\n"
              "    - From: c\r\n"
              "  書き込み中で次回に: 1\r\n"
              "    - From: d\r\n"
              "  読めないファイル: 1\r\n"
              "    - e.eml\r\n"
              "  合計: 12（一致）\r\n"
              "● 受信フォルダ/黒の引出し.ppm\r\n"
              "  読めません: 状態 1（箱がありません）\r\n"
              "\r\n");
}

TEST(ReadLog, SaysWhenTheNumbersDoNotAddUp)
{
    BoxRecord box = oddBox();
    box.held = 13;
    EXPECT_FALSE(box.addsUp());
    const std::string text = toUtf8(readLogText({u"", {box}}));
    EXPECT_NE(text.find("  合計: 12（一致しません。箱のメールは 13）\r\n"), std::string::npos);
}

TEST(ReadLog, IsReadBackAsItWasWritten)
{
    BoxRecord broken = oddBox();
    broken.failed = {1, {u"From: e\nDate: x"}};
    broken.unread = 4;
    broken.held = 17;
    broken.failure = u"エラー 57";
    const ReadRecord first{u"2000/02/15 10:11:12", {oddBox(), missingBox(), broken}};
    const ReadRecord second{u"2000/02/16 10:11:12", {}};
    const Text log = readLogText(first) + readLogText(second);
    const std::vector<ReadRecord> parsed = parseReadLog(log);
    ASSERT_EQ(parsed.size(), 2u);
    EXPECT_EQ(readLogText(parsed[0]) + readLogText(parsed[1]), log);
    EXPECT_TRUE(parsed[0].boxes[2].addsUp());
}

TEST(ReadLog, ALineOfAMailIsNeverTakenForTheLogsOwn)
{
    BoxRecord box = missingBox();
    box.noDate = {1,
                  {u"■ 2001\r● x\x2028"
                   u"  新しく保存: 9\n■ 2002\n  合計: 1"}};
    box.failure.clear();
    box.held = 1;
    const std::vector<ReadRecord> parsed = parseReadLog(readLogText({u"now", {box}}));
    ASSERT_EQ(parsed.size(), 1u);
    ASSERT_EQ(parsed[0].boxes.size(), 1u);
    EXPECT_EQ(parsed[0].boxes[0].stored, 0);
    ASSERT_EQ(parsed[0].boxes[0].noDate.names.size(), 1u);
}

TEST(ReadLog, AFileThatIsNoLogGivesNoRecords)
{
    for (const Text& text : {Text(), Text(u"  箱のメール: 3\r\n"), Text(u"● box\r\n    - x\r\n"),
                             Text(u"\xD800\n\n: \n    - \n")})
        EXPECT_TRUE(parseReadLog(text).empty());
    const auto odd =
        parseReadLog(u"■ \n● \n  箱のメール: 99999999999999\n  日付なし\n    - \n  x: 1");
    ASSERT_EQ(odd.size(), 1u);
    EXPECT_GT(odd[0].boxes.at(0).held, 0);
}

class ReadLogFile : public ::testing::Test {
protected:
    void TearDown() override { hooks::setFileProbe({}); }
    void append(int number) { appendToReadLog(path, {decimal(number), {missingBox()}}); }
    std::vector<ReadRecord> records() { return parseReadLog(fromUtf8(readFile(path))); }

    TempFolder folder;
    std::filesystem::path path = folder / "TolvekRead.log";
};

TEST_F(ReadLogFile, KeepsTheLastHundredReads)
{
    writeBytes(path, "written by hand\n");
    for (int number = 1; number <= 103; ++number)
        append(number);
    const auto kept = records();
    ASSERT_EQ(kept.size(), 100u);
    EXPECT_EQ(kept.front().time, u"4");
    EXPECT_EQ(kept.back().time, u"103");
}

TEST_F(ReadLogFile, KeepsWhatWasThereUntilTheNewLogIsWhole)
{
    append(1);
    hooks::setFileProbe([](FileOperation operation, const std::filesystem::path&) {
        if (operation == FileOperation::Flush)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    EXPECT_THROW(append(2), std::system_error);
    hooks::setFileProbe({});
    EXPECT_EQ(records().size(), 1u);
    EXPECT_EQ(fileNames(folder.path()).size(), 1u);
}

}
}
