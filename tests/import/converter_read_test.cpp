// Mails as they were really sent, from a box through the built converter library to
// rows: the reader must parse what the converter writes.
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "friend/ed_friend.h"
#include "import/mail_box_read.h"
#include "support/archive_fixture.h"

#include <filesystem>

namespace tolvek::test {
namespace {

const std::string kSeparator = "From - Tue Feb 15 10:11:12 2000\n";
const std::string kDate = "Date: Tue, 15 Feb 2000 10:11:12 +0900\n";

class ConverterReadTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, file(library.filename()));
        gPostPetDir = joinPath(appPath(), u"PostPet");
        std::filesystem::create_directories(nativePath(joinPath(gPostPetDir, kReceiveFolder)));
        fillMailBoxTable();
        fillMonthNames();
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        gRecievMailReadOption[0] = 1;
    }

    // Reads a box with these contents; a second reading must change nothing.
    void read(const std::string& box)
    {
        const Path place =
            nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail));
        writeBytes(place, box);
        const DBEngine::Session session;
        MailBoxRead();
        const int once = rows(u"tblTolvek");
        MailBoxRead();
        EXPECT_EQ(rows(u"tblTolvek"), once);
    }
    // The same for a single mail, whose fields are then checked.
    void readOne(const std::string& head, const std::string& text = "text\n")
    {
        execute(Statement{u"DELETE FROM tblTolvek"});
        read(kSeparator + head + kDate + "\n" + text);
        EXPECT_EQ(rows(u"tblTolvek"), 1) << head;
    }
    static std::string field(TextView name)
    {
        Database archive = DBEngine::OpenDatabase(gDbPath);
        Recordset row = archive.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        const std::string text = row.Eof() ? "no row" : toUtf8(row.field(name).text());
        archive.Close();
        return text;
    }
};

TEST_F(ConverterReadTest, ASendersNameAndAddressArriveInTheirFields)
{
    const struct {
        const char *from, *name, *address;
    } cases[] = {
        {"Taro <t@example.jp>", "Taro", "t@example.jp"},
        {"\"Yamada, Taro\" <t@example.jp>", "Yamada, Taro", "t@example.jp"},
        {"\"Taro \\\"T\\\" Y\" <t@example.jp>", "Taro \"T\" Y", "t@example.jp"},
        {"t@example.jp", "設定無し", "t@example.jp"},
        {"Taro", "Taro", "設定無し"},
        {"a..b.@docomo.example.jp", "設定無し", "a..b.@docomo.example.jp"},
        {"\"a..b.\"@docomo.example.jp (ai)", "ai", "a..b.@docomo.example.jp"},
        {"Ai <.ai..@docomo.example.jp>", "Ai", ".ai..@docomo.example.jp"},
        {"Root <root@localhost>", "Root", "root@localhost"},
        // A name that looks like an address must not be taken for it.
        {"\"r.oot@x\" <root@localhost>", "r・oot@x", "root@localhost"},
        {"=?utf-8?B?772Y77yO77ygeQ==?= <root@localhost>", "ｘ・＠y", "root@localhost"},
        // Brackets are the reader's delimiters, in an address too.
        {"\"a(b\"@example.jp (Ai)", "Ai", "a b@example.jp"},
        {"\"Ai (home) <1>\" <t@example.jp>", "Ai  home   1", "t@example.jp"},
        // A bracket inside an encoded word closes no comment.
        {"t@example.jp (=?iso-2022-jp?Q?=1B$B$\"=1B(B?=)", "あ", "t@example.jp"},
        {"(=?iso-2022-jp?Q?=1B$B$\"=1B(B?=) <t@example.jp>", "あ", "t@example.jp"},
        {"t@example.jp (=?utf-8?Q?Ai)", "Ai", "t@example.jp"},
        // Raw bytes: JIS, Shift_JIS with 5C and 40 as second bytes, EUC-JP, UTF-8.
        {"\"\x1B$B;3ED\x1B(B\" <t@example.jp>", "山田", "t@example.jp"},
        {"\x95\x5C\x81\x40\x94\x5C <t@example.jp>", "表　能", "t@example.jp"},
        {"\xBB\xB3\xC5\xC4\xA4\xB5\xA4\xF3 <t@example.jp>", "山田さん", "t@example.jp"},
        {"\xE5\xB1\xB1\xE7\x94\xB0 <t@example.jp>", "山田", "t@example.jp"},
    };
    for (const auto& each : cases) {
        readOne(std::string("From: ") + each.from + "\n");
        EXPECT_EQ(field(u"tblTolvek_SndName"), each.name) << each.from;
        EXPECT_EQ(field(u"tblTolvek_SndAdd"), each.address) << each.from;
    }
}

TEST_F(ConverterReadTest, APostPetFolderMayBeDeeperThanThePathRecords)
{
    for (int n = 0; n < 8; ++n)
        gPostPetDir = joinPath(gPostPetDir, u"とても深いところにあるフォルダー");
    std::filesystem::create_directories(nativePath(joinPath(gPostPetDir, kReceiveFolder)));
    read(kSeparator + kDate + "\ntext\n");
    EXPECT_EQ(rows(u"tblTolvek"), 1);
}

// Without an error it would look like a read without new mail.
TEST_F(ConverterReadTest, ATempFileThatCantBeWrittenIsAnError)
{
    writeBytes(nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail)),
               kSeparator + kDate + "\ntext\n");
    std::filesystem::create_directory(file("Tolvek.Tmp.part"));
    EXPECT_THROW(MailBoxRead(), RuntimeError);
}

TEST_F(ConverterReadTest, AMailWithoutSenderAndReceiverIsKeptAllTheSame)
{
    readOne("Subject: nobody\n");
    EXPECT_EQ(field(u"tblTolvek_SndName"), "設定無し");
    EXPECT_EQ(field(u"tblTolvek_SndAdd"), "設定無し");
    EXPECT_EQ(field(u"tblTolvek_RcvName"), "太郎");
    EXPECT_EQ(field(u"tblTolvek_RcvAdd"), "taro@example.jp");
}

TEST_F(ConverterReadTest, AMailOfNothingButATextIsKeptByItsSeparator)
{
    read("From hana@example.jp Tue Feb 15 10:11:12 2000\nX-Pet: momo\n\ntext\n");
    EXPECT_EQ(rows(u"tblTolvek"), 1);
    EXPECT_EQ(field(u"tblTolvek_SndAdd"), "hana@example.jp");
    EXPECT_EQ(field(u"tblTolvek_YMD") + field(u"tblTolvek_HMS"), "20000215101112");
}

TEST_F(ConverterReadTest, AnAddressBeyondTheFieldIsCutAndFoundAgain)
{
    readOne("From: Ai <" + std::string(70, 'a') + "@example.jp>\n");
    EXPECT_EQ(field(u"tblTolvek_SndAdd"), std::string(60, 'a'));
}

std::string repeated(const std::string& piece, int times)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += piece;
    return all;
}

TEST_F(ConverterReadTest, AnEndlessSubjectKeepsItsFirstHundredCharacters)
{
    // 桜 in base64, one word a line: 7500 bytes, more than a text record holds.
    const std::string word = "\n =?utf-8?B?5qGc?=";
    readOne("Subject:" + repeated(word, 400) + "\n");
    EXPECT_EQ(field(u"tblTolvek_Subject"), repeated("桜", 100));
    readOne("Subject:" + repeated(word, 100) + "\n");
    EXPECT_EQ(field(u"tblTolvek_Subject"), repeated("桜", 100));
    readOne("Subject:" + repeated(word, 99) + " a\n");
    EXPECT_EQ(field(u"tblTolvek_Subject"), repeated("桜", 99));
    readOne("Subject: " + std::string(9000, 'a') + "\n");
    EXPECT_EQ(field(u"tblTolvek_Subject"), std::string(100, 'a'));
}

TEST_F(ConverterReadTest, ASubjectMayLookLikeAnythingOfTheTempFile)
{
    for (const char* subject : {"<End>", "<Start>", "From: a", "a,b \"c\" | d", "Mail"}) {
        readOne("Subject: " + std::string(subject) + "\n");
        EXPECT_EQ(field(u"tblTolvek_Subject"), subject);
    }
}

TEST_F(ConverterReadTest, RawSubjectsAreReadable)
{
    const struct {
        const char *raw, *subject;
    } cases[] = {
        {"\x1B$B:y$,:i$$$?\x1B(B", "桜が咲いた"},
        {"\x8D\xF7\x82\xAA\x8D\xE7\x82\xA2\x82\xBD", "桜が咲いた"},
        {"\xE6\xA1\x9C\xE3\x81\x8C\xE5\x92\xB2\xE3\x81\x84\xE3\x81\x9F", "桜が咲いた"},
        {"it's \x1A here", "it’s   here"},
    };
    for (const auto& each : cases) {
        readOne(std::string("Subject: ") + each.raw + "\n");
        EXPECT_EQ(field(u"tblTolvek_Subject"), each.subject);
    }
}

TEST_F(ConverterReadTest, LinesOfATextThatLookLikeTheTempFilesOwnStayText)
{
    readOne("Subject: s\n", "<End>\n<Start>\nFrom:x\nDate:y\nMail\n=?utf-8?B?5qGc?=\n");
    EXPECT_EQ(field(u"tblTolvek_Subject"), "s");
    EXPECT_EQ(field(u"tblTolvek_Mail1"),
              " <End>\r\n<Start>\r\nFrom:x\r\nDate:y\r\nMail\r\n=?utf-8?B?5qGc?=\r\n");
}

TEST_F(ConverterReadTest, NoLetterOfALongTextIsLost)
{
    std::string text;
    for (int i = 0; i < 700; ++i)
        text += repeated("桜", i % 90) + std::to_string(i) + repeated("x", i * 7 % 5000) + "\n";
    read(kSeparator +
         "Subject: long\nMIME-Version: 1.0\n"
         "Content-Type: text/plain; charset=utf-8\n" +
         kDate + "\n" + text);
    EXPECT_GT(rows(u"tblTolvek"), 1);
    std::string stored;
    Database archive = DBEngine::OpenDatabase(gDbPath);
    for (Recordset row = archive.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"}); !row.Eof();
         row.MoveNext())
        for (int block = 1; block <= 16; ++block)
            stored += toUtf8(row.field(u"tblTolvek_Mail" + decimal(block)).text());
    archive.Close();
    for (std::string* all : {&stored, &text})
        std::erase_if(*all, [](char c) { return c == '\r' || c == '\n' || c == ' '; });
    EXPECT_EQ(stored, text);
}

// It would be taken for an empty friend book.
TEST_F(ConverterReadTest, AFriendBookThatCantBeWrittenIsReported)
{
    const Path book = nativePath(joinPath(gPostPetDir, u"おともだち帳"));
    std::filesystem::create_directory(book);
    writeBytes(book / "a.csv", "1,p,n,a@example.com\n");
    std::filesystem::create_directory(file("Friend.Tmp"));
    boxes.expect(u"エラー番号： 75\r（" + errorText(75) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (edFriend)");
    edFriend();
    std::filesystem::remove(file("Friend.Tmp"));
    edFriend();
    EXPECT_EQ(rows(u"tblFriend"), 1);
}

}
}
