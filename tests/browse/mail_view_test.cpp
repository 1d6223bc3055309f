#include "app/database.h"
#include "browse/mail_view.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class MailViewTest : public WindowFixture {
protected:
    void list(const Text& address) { dspSubject(form, address); }
};

TEST_F(MailViewTest, TheHeaderHasThreeLinesWithNamesInOneColumn)
{
    store(mail(u"hanako@example.jp", u"taro@example.jp", u"ごあいさつ"));
    list(u"taro@example.jp");
    dspMail(form, 0);
    EXPECT_EQ(form.lblHead->Caption(), u"件　名：ごあいさつ\r\n"
                                       u"送信者：花子             　hanako@example.jp\r\n"
                                       u"受信者：太郎             　taro@example.jp");
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　1 / 1 件");
}

TEST_F(MailViewTest, ANameBeyondTheColumnMovesTheAddressAndIsNotCut)
{
    EXPECT_EQ(headerLine(u"送信者：", u"abcdefghijklmnopq", u"a@x.jp"),
              u"送信者：abcdefghijklmnopq　a@x.jp");
    EXPECT_EQ(headerLine(u"送信者：", u"abcdefghijklmnopqrst", u" a@x.jp "),
              u"送信者：abcdefghijklmnopqrst　a@x.jp");
}

TEST_F(MailViewTest, BlocksAreJoinedAsTheyAreAndEmptyOnesAddNothing)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    Statement sql{u"UPDATE tblTolvek SET "};
    sql << u"tblTolvek_Mail1 = '一', tblTolvek_Mail2 = '二', tblTolvek_Mail4 = '四', "
           u"tblTolvek_Mail16 = '終'";
    execute(sql);
    list(u"a@x.jp");
    dspMail(form, 0);
    EXPECT_EQ(form.txtMail->Text(), u"一二四終");
}

TEST_F(MailViewTest, ABlockThatIsNullAddsNothing)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    execute(Statement{u"UPDATE tblTolvek SET tblTolvek_Mail2 = Null"});
    list(u"a@x.jp");
    dspMail(form, 0);
    EXPECT_EQ(form.txtMail->Text(), u"本文\r\n");
}

TEST_F(MailViewTest, ARowBelowTheTableIsTold)
{
    expectDbReport(u"dspMail", 9);
    dspMail(form, -1);
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(MailViewTest, ANameSetAnewSinceTheListWasFilledFindsNoMail)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    list(u"a@x.jp");
    const Text label = form.lblRecCount->Caption();
    execute(Statement{u"UPDATE tblTolvek SET tblTolvek_SndName = '別名'"});
    dspMail(form, 0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblRecCount->Caption(), label);
}

TEST_F(MailViewTest, MarkupAndAmpersandsStayText)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"<b>R&D</b>"));
    list(u"a@x.jp");
    dspMail(form, 0);
    EXPECT_EQ(form.lblHead->Caption().substr(0, 14), u"件　名：<b>R&D</b>");
    EXPECT_EQ(form.lblHead->textFormat(), Qt::PlainText);
}

TEST_F(MailViewTest, AMailThatIsShownYieldsAfterItsText)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    list(u"a@x.jp");
    Text shown;
    const YieldWatch yields([&] { shown = form.txtMail->Text(); });
    dspMail(form, 0);
    EXPECT_EQ(yields.count(), 2) << "the count of rows has one too";
    EXPECT_EQ(shown, u"本文\r\n");
}

}
}
