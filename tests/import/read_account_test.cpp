// The account of a read: every mail of a box is in it, whatever became of it.
#include "import/read_account.h"

#include "app/settings.h"
#include "app/test_hooks.h"
#include "import/mail_box_read.h"
#include "import_fixture.h"
#include "platform/runtime/dates.h"
#include "platform/system/test_hooks.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace tolvek::test {
namespace {

class ReadAccountTest : public ImportTest {
protected:
    void SetUp() override
    {
        ImportTest::SetUp();
        gPostPetDir = joinPath(appPath(), u"PostPet");
        std::filesystem::create_directories(nativePath(joinPath(gPostPetDir, kReceiveFolder)));
        std::filesystem::create_directories(nativePath(joinPath(gPostPetDir, kSendFolder)));
        fillMailBoxTable();
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        gRecievMailReadOption[0] = 1;
    }

    static Path mainBox()
    {
        return nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail));
    }
    static void useTheOwnLibrary(const Path& folder)
    {
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, folder / library.filename());
    }
    // Another maker's library, which has the three documented functions alone.
    void givenTemp(Int16 count, const std::vector<Text>& lines)
    {
        givenTmpLines(lines);
        converterLibrary().Tolvek_Edit = [=](const Text&, const Text&, const Text&, Int16& found,
                                             Int16& status) {
            found = count;
            status = 0;
        };
    }
    static void doNotRead(int number, const Text& title, const Text& subject)
    {
        gNonCopyRule[number] = {10, 0, 1, title, subject};
        gNonCopyRuleCnt = number + 1;
    }
    BoxRecord readBox() { return readAll().boxes.at(0); }
    ReadRecord readAll()
    {
        const DBEngine::Session session;
        ReadAccount account;
        MailBoxRead(account);
        return account.record();
    }
};

const Text kDate = u"Tue, 15 Feb 2000 10:11:12 +0900";

std::vector<Text> oddMails()
{
    std::vector<Text> lines{u"<Start>"};
    const auto add = [&](const Text& subject, const Text& date, const std::vector<Text>& text) {
        lines.insert(lines.end(), {u"From:hanako <hanako@example.jp>", u"To:me@home.jp",
                                   u"Subject:" + subject, u"Date:" + date, u"Mail"});
        lines.insert(lines.end(), text.begin(), text.end());
        lines.push_back(u"<End>");
    };
    add(u"one", kDate, {u"text"});
    add(u"one", kDate, {u"text"});
    add(u"no date", u"", {});
    add(u"no text", kDate, {u"", u""});
    add(u"buy", kDate, {u"text"});
    add(u"win", kDate, {u"text"});
    add(u"buy", u"Wed, 16 Feb 2000 10:11:12", {u"text"});
    add(u"long", u"Thu, 17 Feb 2000 10:11:12", std::vector<Text>(1200, u"line"));
    return lines;
}

TEST_F(ReadAccountTest, EveryMailOfABoxOfOdditiesIsCountedOnce)
{
    doNotRead(0, u"広告", u"buy");
    doNotRead(1, u"くじ", u"win");
    givenTemp(8, oddMails());
    const BoxRecord box = readBox();
    EXPECT_EQ(box.held, 8);
    EXPECT_EQ(box.stored, 2);
    EXPECT_EQ(box.known, 1);
    EXPECT_EQ(box.keptOut, (std::vector<KeptOut>{{u"広告", 2}, {u"くじ", 1}}));
    EXPECT_EQ(box.noDate.count, 1);
    EXPECT_EQ(box.noText.count, 1);
    EXPECT_TRUE(box.addsUp());
    EXPECT_EQ(box.noDate.names.at(0), u"From: hanako <hanako@example.jp>\nTo: ぼく <me@home.jp>\n"
                                      u"Subject: no date\nDate:");
    EXPECT_EQ(box.noText.names.at(0).substr(0, 5), u"From:");
}

TEST_F(ReadAccountTest, ASecondReadFindsTheSameMailsKnown)
{
    givenTemp(8, oddMails());
    const BoxRecord first = readBox();
    const BoxRecord second = readBox();
    EXPECT_EQ(second.stored, 0);
    EXPECT_EQ(second.known, first.stored + first.known);
    EXPECT_TRUE(second.addsUp());
}

TEST_F(ReadAccountTest, AMailWithoutItsEndLineShowsAsADifference)
{
    std::vector<Text> lines = oddMails();
    lines.pop_back();
    givenTemp(8, lines);
    EXPECT_FALSE(readBox().addsUp());
}

TEST_F(ReadAccountTest, ACountAtItsLargestValueMayStandForMore)
{
    givenTemp(32767, {u"<Start>"});
    EXPECT_EQ(readBox().held, 32767);
}

TEST_F(ReadAccountTest, AMailThatBroughtAnErrorIsNamedAsNotStored)
{
    givenTemp(8, oddMails());
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Write && path.filename().string().starts_with("Tolvek.Mdb"))
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    const BoxRecord box = readBox();
    hooks::setFileProbe({});
    EXPECT_EQ(takeReports().size(), 1u);
    EXPECT_EQ(box.failed.count, 1);
    EXPECT_EQ(box.unread, 7);
    EXPECT_NE(box.failure, u"");
    EXPECT_EQ(box.stored, 0);
    EXPECT_TRUE(box.addsUp());
}

TEST_F(ReadAccountTest, ABoxThatTheLibraryCantReadHasItsStatus)
{
    converterLibrary().Tolvek_Edit = [](const Text&, const Text&, const Text&, Int16&,
                                        Int16& status) { status = 7; };
    EXPECT_EQ(readBox().failure, u"状態 7");
}

TEST_F(ReadAccountTest, BoxesAfterAFailureAreNamedAsNotRead)
{
    gSendMailReadOption[0] = 1;
    converterLibrary().Tolvek_Edit = [](const Text&, const Text&, const Text&, Int16&, Int16&) {
        throw RuntimeError(57);
    };
    ReadAccount account;
    EXPECT_THROW(MailBoxRead(account), RuntimeError);
    const std::vector<BoxRecord> read = account.record().boxes;
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].box, u"受信フォルダ/受信メール.ppm");
    EXPECT_EQ(read[0].failure, u"エラー 57（" + errorText(57) + u"）");
    EXPECT_EQ(read[1].box, u"送信フォルダ/送信メール.ppm");
    EXPECT_NE(read[1].failure, u"");
}

TEST_F(ReadAccountTest, OnlyAThousandMailsAreNamed)
{
    std::vector<Text> lines{u"<Start>"};
    for (int number = 0; number < 1002; ++number)
        lines.insert(lines.end(), {u"Subject:s", u"Mail", u"<End>"});
    givenTemp(1002, lines);
    const BoxRecord box = readBox();
    EXPECT_EQ(box.noDate.count, 1002);
    EXPECT_EQ(box.noDate.names.size(), 1000u);
    EXPECT_TRUE(box.addsUp());
}

class OwnLibraryAccountTest : public ReadAccountTest {
protected:
    void SetUp() override
    {
        ReadAccountTest::SetUp();
        useTheOwnLibrary(folder.path());
    }
    static std::string mailOf(const std::string& head)
    {
        return "From - \n" + head + "\nletter\n\n";
    }
};

const std::string kOwnDate = "Date: Tue, 15 Feb 2000 10:11:12 +0900\n";

TEST_F(OwnLibraryAccountTest, MailsWithoutAnyDateAreNamedByTheirOwnHeaderLines)
{
    writeBytes(mainBox(), mailOf("Subject: one\nTo: a@b.jp\n" + kOwnDate) +
                              mailOf("Message-Id: <1@x>\nSubject: two\nTo: a@b.jp\n") +
                              mailOf("Message-Id: <2@x>\nSubject: three\nTo: a@b.jp\nDate: ?\n"));
    const BoxRecord box = readBox();
    EXPECT_EQ(box.held, 3);
    EXPECT_EQ(box.stored, 1);
    EXPECT_EQ(box.noDate.names,
              (std::vector<Text>{u"Message-Id: <1@x>\nSubject: two\nTo: a@b.jp",
                                 u"Message-Id: <2@x>\nSubject: three\nTo: a@b.jp\nDate: ?"}));
    EXPECT_TRUE(box.addsUp());
}

TEST_F(OwnLibraryAccountTest, UnreadableFilesOfAFolderAreNamed)
{
    std::filesystem::create_directory(mainBox());
    writeBytes(mainBox() / "a.eml", "Subject: one\nFrom: a@b.jp\n" + kOwnDate + "\nletter\n");
    writeBytes(mainBox() / "b.eml", "no mail");
    const BoxRecord box = readBox();
    EXPECT_EQ(box.stored, 1);
    EXPECT_EQ(box.files.count, 1);
    EXPECT_EQ(box.files.names, std::vector<Text>{u"b.eml"});
    EXPECT_TRUE(box.addsUp());
}

// As the library notes it; the box that grows is converted in the converter's tests.
TEST_F(ReadAccountTest, TheLastMailOfAGrowingBoxIsNamed)
{
    givenTemp(1, {u"<Start>", u"From:hanako <hanako@example.jp>", u"To:me@home.jp", u"Subject:one",
                  u"Date:" + kDate, u"Mail", u"text", u"<End>"});
    converterLibrary().Tolvek_EditNoted = [convert = converterLibrary().Tolvek_Edit](
                                              const Text& list, const Text& mail, const Text& temp,
                                              Int16& count, Int16& status, ConverterNotes& notes) {
        convert(list, mail, temp, count, status);
        notes = {.given = true,
                 .mails = 2,
                 .leftOut = {{ConverterNotes::Why::StillGrowing, u"Subject: two"}}};
    };
    const BoxRecord box = readBox();
    EXPECT_EQ(box.held, 2);
    EXPECT_EQ(box.stored, 1);
    EXPECT_EQ(box.growing.names, std::vector<Text>{u"Subject: two"});
    EXPECT_TRUE(box.addsUp());
}

TEST_F(OwnLibraryAccountTest, AMissingBoxIsToldFromOneOfUnknownForm)
{
    EXPECT_EQ(readBox().failure, u"状態 1（箱がありません）");
    writeBytes(mainBox(), "no mail");
    EXPECT_EQ(readBox().failure, u"状態 1（メールの箱として読める形ではありません）");
}

using ReadAccountFile = ReadAccountTest;

TEST_F(ReadAccountFile, LiesBesideTheDatabase)
{
    givenTemp(8, oddMails());
    ReadAccount account;
    MailBoxRead(account);
    writeReadAccount(account);
    const auto records = parseReadLog(fromUtf8(readFile(file("TolvekRead.log"))));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].time.substr(0, 11), formatDate(now()) + u" ");
    EXPECT_EQ(records[0].boxes.at(0).held, 8);
}

TEST_F(ReadAccountFile, AReadOfNoBoxLeavesNoRecord)
{
    gRecievMailReadOption[0] = 0;
    ReadAccount account;
    MailBoxRead(account);
    writeReadAccount(account);
    EXPECT_FALSE(exists("TolvekRead.log"));
}

}
}
