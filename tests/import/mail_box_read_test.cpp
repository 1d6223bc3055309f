#include "import/mail_box_read.h"

#include "app/settings.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(MailBoxReadTest, NamesTheNineDrawersInPostPetsOrder)
{
    fillMailBoxTable();
    const char16_t* drawers[] = {u"ピンクの引出し", u"黄色の引出し", u"紫の引出し",
                                 u"緑色の引出し",   u"黒の引出し",   u"水色の引出し",
                                 u"赤の引出し",     u"茶色の引出し", u"橙色の引出し"};
    for (int row = 0; row < 9; ++row) {
        EXPECT_EQ(gMailBoxTable[row].list, Text(drawers[row]) + u"リスト.ppl");
        EXPECT_EQ(gMailBoxTable[row].mail, Text(drawers[row]) + u".ppm");
    }
}

TEST(MailBoxReadTest, KeepsSevenEmptyRowsAsRoom)
{
    fillMailBoxTable();
    for (int row = 9; row <= 15; ++row) {
        EXPECT_EQ(gMailBoxTable[row].list, u"");
        EXPECT_EQ(gMailBoxTable[row].mail, u"");
    }
    EXPECT_THROW(gMailBoxTable[16], RuntimeError);
}

TEST(MailBoxReadTest, NamesTheMainBoxesOfBothSides)
{
    EXPECT_EQ(kReceiveFolder, u"受信フォルダ");
    EXPECT_EQ(kReceiveMainBox.list, u"受信リスト.ppl");
    EXPECT_EQ(kReceiveMainBox.mail, u"受信メール.ppm");
    EXPECT_EQ(kSendFolder, u"送信フォルダ");
    EXPECT_EQ(kSendMainBox.list, u"送信リスト.ppl");
    EXPECT_EQ(kSendMainBox.mail, u"送信メール.ppm");
}

}
}
