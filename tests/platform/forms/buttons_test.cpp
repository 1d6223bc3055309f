#include "platform/forms/buttons.h"
#include "platform/forms/frames.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

class ButtonsTest : public testing::Test {
protected:
    ShownForm form;
    int clicks = 0;
    template <class Kind> void countClicks(Kind& button)
    {
        onEvent(&button, &Kind::Click, [this] { ++clicks; });
    }
};

TEST_F(ButtonsTest, APressedCommandButtonClicksOnceAndADisabledOneNever)
{
    auto& button = form.add<CommandButton>(u"cmd", u"終　了");
    button.Move(0, 0, 900, 300);
    countClicks(button);
    form.Show();
    click(button);
    EXPECT_EQ(clicks, 1);
    button.setEnabled(false);
    click(button);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(button.Caption(), u"終　了");
    EXPECT_FALSE(button.autoDefault());
}

TEST_F(ButtonsTest, ACaptionWiderThanItsButtonIsSetNarrowerAndKeepsItsFont)
{
    auto& button = form.add<CommandButton>(u"cmd");
    button.setFontOf(u"ＭＳ Ｐ明朝", 9);
    button.Move(0, 0, 3000, 300);
    button.setCaption(u"PostPet Mail Read");
    const int wide = button.fontMetrics().horizontalAdvance(button.text());
    button.setWidth(twips(wide + 2));
    EXPECT_LT(button.fontMetrics().horizontalAdvance(button.text()), wide);
    EXPECT_EQ(button.FontName(), u"ＭＳ Ｐ明朝");
    button.setWidth(3000);
    EXPECT_EQ(button.fontMetrics().horizontalAdvance(button.text()), wide);
}

TEST_F(ButtonsTest, ACheckBoxKeepsAny16BitValue)
{
    auto& box = form.add<CheckBox>(u"chk");
    for (const int value : {0, 1, 2, -1, 32767, -32768}) {
        box.setValue(value);
        EXPECT_EQ(box.Value(), value);
        EXPECT_EQ(box.isChecked(), value != 0);
    }
}

TEST_F(ButtonsTest, AClickOnACheckBoxGivesZeroThenOneAndNoThirdState)
{
    auto& box = form.add<CheckBox>(u"chk", u"受信メール");
    box.Move(0, 0, 1500, 300);
    countClicks(box);
    box.setValue(5);
    form.Show();
    box.click();
    EXPECT_EQ(box.Value(), 0);
    EXPECT_EQ(box.checkState(), Qt::Unchecked);
    box.click();
    EXPECT_EQ(box.Value(), 1);
    EXPECT_EQ(box.checkState(), Qt::Checked);
    key(box, Qt::Key_Space);
    EXPECT_EQ(box.Value(), 0);
    EXPECT_EQ(clicks, 3);
}

TEST_F(ButtonsTest, SettingAnOptionButtonClearsTheOthersOfItsFrameOnly)
{
    auto& rules = form.add<Frame>(u"Frame2");
    auto& actions = form.add<Frame>(u"Frame3");
    OptionButton a(rules, u"optTerms(0)"), b(rules, u"optTerms(1)"), other(actions, u"optAct(0)");
    a.setValue(true);
    other.setValue(true);
    b.setValue(true);
    EXPECT_FALSE(a.Value());
    EXPECT_TRUE(b.Value());
    EXPECT_TRUE(other.Value());
}

TEST_F(ButtonsTest, AnArrayOfOptionButtonsCanBeClearedAndUsedAgain)
{
    auto& frame = form.add<Frame>(u"Frame2");
    OptionButton a(frame, u"a"), b(frame, u"b");
    countClicks(b);
    form.Show();
    a.setValue(true);
    a.setValue(false);
    EXPECT_FALSE(a.Value());
    EXPECT_FALSE(b.Value());
    b.click();
    EXPECT_TRUE(b.Value());
    a.setValue(true);
    EXPECT_FALSE(b.Value());
    EXPECT_EQ(clicks, 1);
}

}

}
