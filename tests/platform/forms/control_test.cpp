#include "platform/forms/buttons.h"
#include "platform/forms/control.h"
#include "platform/forms/label.h"
#include "platform/forms/list_box.h"
#include "platform/forms/text_box.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QScrollBar>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(ControlTest, TwipsAreKeptAndOnlyPixelsAreRoundedUp)
{
    ShownForm form;
    auto& list = form.add<ListBox>(u"lst");
    list.setHeight(7404.0F / 5);
    list.setTop(480);
    list.setLeft(50);
    list.setWidth(2936.25F);
    EXPECT_FLOAT_EQ(list.Height(), 1480.8F);
    EXPECT_FLOAT_EQ(list.Width(), 2936.25F);
    EXPECT_EQ(list.geometry(), QRect(4, 32, 196, 99));
}

TEST(ControlTest, TheNameIsTheOneTestsFindItBy)
{
    ShownForm form;
    auto& button = form.add<CommandButton>(u"comEnd", u"終　了");
    EXPECT_EQ(button.Name(), u"comEnd");
    EXPECT_EQ(&find<CommandButton>(form, u"comEnd"), &button);
    EXPECT_EQ(form.control(u"comOther"), nullptr);
}

TEST(ControlTest, EnabledIsAsSetWhateverTheContainerIs)
{
    ShownForm form;
    auto& button = form.add<CommandButton>(u"cmd");
    form.client().setEnabled(false);
    EXPECT_TRUE(button.Enabled());
    button.setEnabled(false);
    EXPECT_FALSE(button.Enabled());
}

TEST(ControlTest, VisibleIsAsSetBeforeTheFormShows)
{
    ShownForm form;
    auto& button = form.add<CommandButton>(u"cmd");
    EXPECT_TRUE(button.Visible());
    button.setVisible(false);
    EXPECT_FALSE(button.Visible());
    form.Show();
    EXPECT_FALSE(button.isVisible());
    button.setVisible(true);
    EXPECT_TRUE(button.isVisible());
}

TEST(ControlTest, FocusOnADisabledControlHasNoEffect)
{
    ShownForm form;
    auto& first = form.add<TextBox>(u"txtFirst");
    auto& second = form.add<TextBox>(u"txtSecond");
    form.Show();
    first.SetFocus();
    EXPECT_TRUE(first.HasFocus());
    EXPECT_EQ(form.ActiveControl(), &first);
    second.setEnabled(false);
    second.SetFocus();
    EXPECT_TRUE(first.HasFocus());
    second.setEnabled(true);
    second.SetFocus();
    EXPECT_EQ(form.ActiveControl(), &second);
}

TEST(ControlTest, ToolTipsAreNeverMarkup)
{
    ShownForm form;
    auto& button = form.add<CommandButton>(u"cmd");
    button.setToolTipText(u"<b>x</b>");
    EXPECT_EQ(button.ToolTipText(), u"<b>x</b>");
    EXPECT_FALSE(button.toolTip().contains(QStringLiteral("<b>")));
    button.setToolTipText(u"Tolvek を終了します");
    EXPECT_EQ(button.toolTip(), QStringLiteral("Tolvek を終了します"));
}

TEST(ControlTest, ANoteIsShownBelowTheToolTipWhicheverIsSetFirst)
{
    ShownForm form;
    auto& button = form.add<CommandButton>(u"cmd");
    button.setToolTipNote(u"選んでから");
    EXPECT_EQ(button.toolTip(), QStringLiteral("選んでから"));
    button.setToolTipText(u"削除します");
    EXPECT_EQ(button.toolTip(), QStringLiteral("削除します\n選んでから"));
    EXPECT_EQ(button.ToolTipText(), u"削除します");
    button.setToolTipNote({});
    EXPECT_EQ(button.toolTip(), QStringLiteral("削除します"));
}

TEST(ControlTest, ColoursReachTheWidgetAndAreGivenBackAsSet)
{
    ShownForm form;
    auto& label = form.add<Label>(u"lbl");
    label.setForeColor(0x0000FF);
    label.setBackColor(0x00FFC0C0);
    EXPECT_EQ(label.ForeColor(), 0x0000FF);
    EXPECT_EQ(label.BackColor(), 0x00FFC0C0);
    EXPECT_EQ(label.palette().color(QPalette::WindowText), QColor(Qt::red));
    EXPECT_EQ(label.palette().color(QPalette::Window), QColor(0xC0, 0xC0, 0xFF));
    label.setForeColor(kWindowText);
    EXPECT_EQ(label.palette().color(QPalette::WindowText), colourOf(kWindowText));
}

TEST(ControlTest, TheFontsNameIsTheOneThatWasSetNotTheStandIns)
{
    ShownForm form;
    auto& text = form.add<MultiLineTextBox>(u"txtMail");
    text.setFontName(u"ＭＳ 明朝");
    text.setFontSize(20);
    text.setFontBold(true);
    text.setFontItalic(true);
    EXPECT_EQ(text.FontName(), u"ＭＳ 明朝");
    EXPECT_FLOAT_EQ(text.FontSize(), 20);
    EXPECT_TRUE(text.FontBold());
    EXPECT_TRUE(text.FontItalic());
    EXPECT_EQ(text.font().family(), installedFamily(u"ＭＳ 明朝"));
    EXPECT_TRUE(text.font().bold());
}

TEST(ControlTest, TabGoesByTabIndexNotByCreation)
{
    TestForm form;
    CommandButton *a = nullptr, *b = nullptr, *c = nullptr;
    form.build = [&](TestForm& f) {
        a = new CommandButton(f, u"a");
        b = new CommandButton(f, u"b");
        c = new CommandButton(f, u"c");
        a->setTabIndex(2);
        b->setTabIndex(0);
        c->setTabIndex(1);
    };
    form.Show();
    b->SetFocus();
    key(*b, Qt::Key_Tab);
    EXPECT_TRUE(c->HasFocus());
    key(*c, Qt::Key_Tab);
    EXPECT_TRUE(a->HasFocus());
}

TEST(ControlTest, AControlEndsWhereItsTwipsEnd)
{
    ShownForm form;
    auto& list = form.add<ListBox>(u"lst");
    list.Move(2986.25F, 480, 8628.75F, 960); // ends at 774.3 pixels
    EXPECT_EQ(list.geometry(), QRect(QPoint(200, 32), QPoint(774, 95)));
}

TEST(ControlTest, TheArrowsOfAScrollBarKeepTheirColour)
{
    ShownForm form;
    auto& text = form.add<MultiLineTextBox>(u"txtMail");
    const QPalette before = text.verticalScrollBar()->palette();
    text.setForeColor(0x0000FF);
    EXPECT_EQ(text.palette().color(QPalette::Text), QColor(Qt::red));
    for (const auto role : {QPalette::ButtonText, QPalette::WindowText})
        EXPECT_EQ(text.verticalScrollBar()->palette().color(role), before.color(role));
}

}

}
