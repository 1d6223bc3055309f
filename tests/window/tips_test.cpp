#include "window/tips.h"

#include "window/frm_tolvek.h"

#include <gtest/gtest.h>

#include <QMenu>

namespace tolvek::test {
namespace {

class TipsTest : public ::testing::Test {
protected:
    TipsTest() { form.Load(); }
    ~TipsTest() override { form.Unload(); }

    frmTolvek form;
};

// A menu shows all tips of its entries; one without a text would repeat its caption.
TEST_F(TipsTest, EveryEntryOfAMenuWithTipsHasOne)
{
    int tips = 0;
    for (MenuEntry* parent : form.window()->findChildren<MenuEntry*>()) {
        if (!parent->menu() || !parent->menu()->toolTipsVisible()) continue;
        for (const QAction* action : parent->menu()->actions()) {
            EXPECT_TRUE(action->isSeparator() || action->toolTip() != action->text())
                << action->text().toStdString();
            ++tips;
        }
    }
    EXPECT_GT(tips, 15);
}

TEST_F(TipsTest, ACommandThatMayDoNothingSaysWhen)
{
    for (const CommandButton* button : {form.cmdAddrDel, form.comMailDel, form.comSendMail})
        EXPECT_NE(button->ToolTipNote().find(u"選ばれていないときは、何も起きません。"),
                  Text::npos);
    EXPECT_NE(form.comMailRead->ToolTipNote().find(u"一覧は変わりません。"), Text::npos);
    EXPECT_NE(form.memAddressAdd->ToolTipText().find(u"何も起きません。"), Text::npos);
}

TEST_F(TipsTest, ACommandWithoutAMessageAtItsEndSaysSo)
{
    for (const MenuEntry* entry : {form.memBackUp_FileEdit, form.memFriendEd, form.memFilterGo})
        EXPECT_NE(entry->ToolTipText().find(u"終わりのメッセージは出ません。"), Text::npos);
}

TEST_F(TipsTest, TheButtonsKeepTheirOwnTips)
{
    EXPECT_EQ(form.comMailDel->ToolTipText(), u"選択されているメールを削除します");
    EXPECT_TRUE(form.comMailDel->toolTip().startsWith("選択されているメールを削除します\n"));
}

}
}
