#include "platform/forms/events.h"
#include "platform/forms/menu.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

class MenuTest : public testing::Test {
protected:
    MenuTest()
    {
        form.build = [this](TestForm& f) {
            top = new MenuEntry(f, u"memHelp_Top", u"ヘルプ");
            help = new MenuEntry(*top, u"memHelp", u"Tolvek ヘルプ");
            separator = new MenuEntry(*top, u"memsp999", u"-");
            below = new MenuEntry(*top, u"memVar", u"バージョン情報");
            deep = new MenuEntry(*below, u"memDeep", u"さらに");
            help->setShortcut(Qt::Key_F1);
        };
        form.Show();
        onEvent(help, &MenuEntry::Click, [this] { ++clicks; });
        form.window()->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(form.window(), 60000));
    }
    ~MenuTest() override { form.Unload(); }

    TestForm form;
    MenuEntry *top = nullptr, *help = nullptr, *separator = nullptr, *below = nullptr,
              *deep = nullptr;
    int clicks = 0;
};

TEST_F(MenuTest, EntriesStandInTheirOrderAndDepth)
{
    ASSERT_EQ(form.menuBar().actions().size(), 1);
    EXPECT_EQ(form.menuBar().actions().front()->text(), QStringLiteral("ヘルプ"));
    ASSERT_EQ(top->menu()->actions().size(), 3);
    EXPECT_TRUE(top->menu()->actions()[1]->isSeparator());
    EXPECT_EQ(top->menu()->actions()[1]->text(), QString());
    EXPECT_FALSE(top->menu()->actions()[0]->isSeparator());
    EXPECT_EQ(below->menu()->actions().front(), &deep->action());
    EXPECT_EQ(help->menu(), nullptr);
    EXPECT_EQ(help->Name(), u"memHelp");
    EXPECT_EQ(separator->Caption(), u"-");
}

TEST_F(MenuTest, AMenuShowsItsTips)
{
    EXPECT_FALSE(top->menu()->toolTipsVisible());
    help->setToolTipText(u"<b>説明書</b>");
    EXPECT_EQ(help->ToolTipText(), u"<b>説明書</b>");
    EXPECT_FALSE(help->action().toolTip().contains(QStringLiteral("<b>")));
    EXPECT_TRUE(top->menu()->toolTipsVisible());
    EXPECT_FALSE(below->menu()->toolTipsVisible());
}

TEST_F(MenuTest, AnEntryThatIsOffDoesNotClick)
{
    help->action().trigger();
    EXPECT_EQ(clicks, 1);
    help->setEnabled(false);
    help->action().trigger();
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(help->Enabled());
}

TEST_F(MenuTest, TheShortcutIsDeadWhileTheBranchIsOff)
{
    key(*form.window(), Qt::Key_F1);
    EXPECT_EQ(clicks, 1);
    top->setEnabled(false);
    key(*form.window(), Qt::Key_F1);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(help->Enabled());
    top->setEnabled(true);
    key(*form.window(), Qt::Key_F1);
    EXPECT_EQ(clicks, 2);
}

TEST_F(MenuTest, AnInvisibleEntryIsAsSet)
{
    help->setVisible(false);
    EXPECT_FALSE(help->Visible());
    EXPECT_FALSE(help->action().isVisible());
}

TEST_F(MenuTest, ThePopupShowsTheBranchUnlessItIsOff)
{
    top->setEnabled(false);
    PopupMenu(*top, {});
    EXPECT_FALSE(top->menu()->isVisible());
    top->setEnabled(true);
    PopupMenu(*top, {});
    EXPECT_TRUE(top->menu()->isVisible());
    top->menu()->close();
    PopupMenu(*help, {}); // has no entries below it
}

TEST_F(MenuTest, TheBarTakesNothingFromTheControlsArea)
{
    form.setHeight(7404);
    EXPECT_EQ(form.client().height(), 454);
    EXPECT_EQ(form.client().y(), form.menuBar().height());
}

}

}
