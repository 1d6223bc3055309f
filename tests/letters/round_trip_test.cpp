// Letters that were exported as mail and are read again by the program itself, into an
// empty archive: every row is the same.
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "demo/sample_folder.h"
#include "import/mail_box_read.h"
#include "letters/export.h"
#include "letters/letter_reader.h"
#include "letters/search.h"
#include "support/archive_fixture.h"

#include <algorithm>

namespace tolvek::test {
namespace {

using Rows = std::vector<std::vector<Text>>;

class RoundTripTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, file(library.filename()));
        gPostPetDir = joinPath(appPath(), u"PostPet");
        gMyMailAddr = u"hana@example.jp";
        gMyMailHandle = u"はな";
        fillMailBoxTable();
        fillMonthNames();
        for (int element = 0; element <= 9; ++element)
            gRecievMailReadOption[element] = 1;
        for (int element = 0; element <= 3; ++element)
            gSendMailReadOption[element] = 1;
    }
    void TearDown() override
    {
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        ArchiveFixture::TearDown();
    }

    static Path receiveBox()
    {
        return nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail));
    }
    static Path sendBox()
    {
        return nativePath(joinPath(joinPath(gPostPetDir, kSendFolder), kSendMainBox.mail));
    }

    // Each row with all its fields, in key order.
    static Rows everything()
    {
        Database archive = DBEngine::OpenDatabase(gDbPath);
        Rows all;
        for (Recordset row = archive.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
             !row.Eof(); row.MoveNext()) {
            std::vector<Text>& fields = all.emplace_back();
            for (int field = 0; field < 26; ++field)
                fields.push_back(row.field(field).text());
        }
        archive.Close();
        return all;
    }
    static void read()
    {
        const DBEngine::Session session;
        MailBoxRead();
    }

    // Exports both directions in this form, empties archive and boxes, and reads.
    void thereAndBack(ExportForm form)
    {
        Library::Source source;
        source.letters = readLetterFile(file("Tolvek.Mdb"));
        const Library library({source});
        for (const bool sent : {false, true}) {
            Narrowing narrowing;
            narrowing.sent = sent;
            auto letters = narrowed(library, matching(library, {}), narrowing).letters;
            std::reverse(letters.begin(), letters.end());
            exportLetters(library, letters, form, file(sent ? "sent" : "received"));
        }
        std::filesystem::remove_all(nativePath(gPostPetDir));
        std::filesystem::create_directories(receiveBox().parent_path());
        std::filesystem::create_directories(sendBox().parent_path());
        std::filesystem::rename(file("received"), receiveBox());
        std::filesystem::rename(file("sent"), sendBox());
        execute(Statement{u"DELETE FROM tblTolvek"});
        read();
    }

    // A text may be very long.
    static std::string start(const Text& text) { return toUtf8(text.substr(0, 40)); }

    void expectTheSameAfter(ExportForm form)
    {
        const Rows before = everything();
        thereAndBack(form);
        const Rows after = everything();
        EXPECT_EQ(after.size(), before.size());
        for (std::size_t row = 0; row < std::min(before.size(), after.size()); ++row)
            for (std::size_t field = 0; field < 26; ++field)
                EXPECT_TRUE(after[row][field] == before[row][field])
                    << "row " << row << " field " << field << ": " << start(before[row][field])
                    << " became " << start(after[row][field]);
    }

    // Stores what a box with these texts gives, each in a mail of its own.
    void givenTexts(const std::vector<std::string>& texts)
    {
        std::string box;
        for (std::size_t number = 0; number < texts.size(); ++number)
            box += "From - Tue Feb 15 10:11:12 2000\nFrom: Taro <taro@example.com>\n"
                   "To: hana@example.jp\nSubject: text " +
                   std::to_string(number) +
                   "\nDate: Tue, 15 Feb 2000 10:" + std::to_string(10 + number) +
                   ":00 +0900\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n"
                   "Content-Transfer-Encoding: 8bit\n\n" +
                   texts[number] + "\n\n";
        std::filesystem::create_directories(receiveBox().parent_path());
        writeBytes(receiveBox(), box);
        read();
        ASSERT_EQ(rows(u"tblTolvek"), static_cast<int>(texts.size()));
    }
};

TEST_F(RoundTripTest, TheSampleAsMbox)
{
    sample::makeSampleFolder(nativePath(gPostPetDir));
    read();
    ASSERT_EQ(rows(u"tblTolvek"), 193);
    expectTheSameAfter(ExportForm::Mbox);
}

TEST_F(RoundTripTest, TheSampleAsAFolderOfMessages)
{
    sample::makeSampleFolder(nativePath(gPostPetDir));
    read();
    expectTheSameAfter(ExportForm::EmlFolder);
}

const std::vector<std::string> kOddTexts{
    "line\n\n\n\nafter three empty lines\n\n\n\n\n\n\nafter six",
    ">From the beginning\nFrom here on\n\n>>From there",
    "\n\n\n\nempty lines first",
    "a line\n.\nafter a dot\n..two",
    "the header of a mail:\n\nFrom: a@b.jp\nTo: c@d.jp\nSubject: quoted\nDate: Tue, 15 Feb 2000 "
    "10:11:12 +0900\n\nits text",
    "Subject: looks like a header\nX-Other: too",
    "begin 644 file.txt\nno uuencoded line\nend",
    "trailing blanks   \n　full-width　\nTAB\tinside",
    "=?ISO-2022-JP?B?GyRCJCIbKEI=?= in a text and =E3=81=82",
    "don't 'quote' a|bar <End>\n<End> alone",
    "http://example.com/?a=b&c=d#e\nmailto:x@example.com",
    "①㈱髙﨑～－ｶﾞｷﾞ",
    std::string(3000, 'x') + "\n" + std::string(12000, 'y'),
    "-- \nsignature",
    "HELO example.com\nMAIL FROM:<a@b.jp>",
    "HELO\n\n\n"};

TEST_F(RoundTripTest, OddTextsAsMbox)
{
    givenTexts(kOddTexts);
    expectTheSameAfter(ExportForm::Mbox);
}

TEST_F(RoundTripTest, OddTextsAsAFolderOfMessages)
{
    givenTexts(kOddTexts);
    expectTheSameAfter(ExportForm::EmlFolder);
}

// Longer than one row holds, with runs of empty lines and lines beyond a block.
TEST_F(RoundTripTest, VeryLongTexts)
{
    std::string lines, wide;
    for (int line = 0; line < 1700; ++line)
        lines += "line " + std::to_string(line) + (line % 7 == 0 ? "\n\n\n\n" : "\n");
    for (int line = 0; line < 60; ++line) {
        for (int word = 0; word < 900; ++word)
            wide += "長い行";
        wide += "\n";
    }
    std::filesystem::create_directories(receiveBox().parent_path());
    givenTexts({"short"});
    execute(Statement{u"DELETE FROM tblTolvek"});
    std::string box;
    for (const auto& [subject, text] : {std::pair{"lines", lines}, {"wide", wide}, {"", lines}})
        box += "From - Tue Feb 15 10:11:12 2000\nFrom: a@b.jp\nTo: hana@example.jp\nSubject: " +
               std::string(subject) +
               "\nDate: Tue, 15 Feb 2000 10:11:12 +0900\nContent-Type: text/plain; "
               "charset=UTF-8\n\n" +
               text + "\n";
    writeBytes(receiveBox(), box);
    read();
    ASSERT_GT(rows(u"tblTolvek"), 6);
    expectTheSameAfter(ExportForm::Mbox);
}

TEST_F(RoundTripTest, OddHeadings)
{
    const std::vector<std::string> headings{
        "From: taro@example.com\nTo: hana@example.jp\nSubject:\n",
        "To: hana@example.jp\nSubject: no sender\n",
        "From: \"Taro, the \\\"first\\\"\" <taro@example.com>\nTo: x@y.jp\nSubject: a \"b\" <c>\n",
        "From: =?UTF-8?B?44Gv44Gq?= <hana@localhost>\nTo: jiro@example.jp\nSubject: "
        "=?UTF-8?B?44Gv44Gq44Gv44Gq?= and =? no word\n",
        "From: O'Hara (Ken) <ohara@example.com>\nTo: hana@example.jp\nSubject: it's\n",
        "From: no address\nTo: hana@example.jp\nSubject: " + std::string(300, 'x') + "\n",
        "From: \"a.b@c\" <x@y.jp>\nTo: hana@example.jp\nSubject: Re: Re: \n"};
    std::string box;
    int minute = 10;
    for (const std::string& heading : headings)
        box += "From - Tue Feb 15 10:11:12 2000\n" + heading +
               "Date: Tue, 15 Feb 2000 10:" + std::to_string(minute++) + ":12 +0900\n\ntext\n\n";
    for (const Path& place : {receiveBox(), sendBox()}) {
        std::filesystem::create_directories(place.parent_path());
        writeBytes(place, place == sendBox() ? "" : box);
    }
    read();
    const int received = rows(u"tblTolvek");
    std::string sent = box;
    for (std::size_t at = 0; (at = sent.find(" 10:", at)) != std::string::npos;)
        sent.replace(at, 4, " 11:");
    writeBytes(sendBox(), sent);
    read();
    ASSERT_EQ(rows(u"tblTolvek"), 2 * received);
    ASSERT_EQ(received, static_cast<int>(headings.size()));
    expectTheSameAfter(ExportForm::Mbox);
}

}
}
