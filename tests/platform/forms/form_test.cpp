#include "platform/forms/events.h"
#include "platform/forms/form.h"
#include "platform/forms/list_box.h"
#include "platform/forms/test_hooks.h"
#include "platform/forms/text_box.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/runtime_error.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

using Events = std::vector<std::string>;

// Acts once the form's event loop runs.
void later(std::function<void()> act)
{
    QTimer::singleShot(0, [act = std::move(act)] { runEvent(act); });
}

TEST(FormTest, LoadBuildsAndShowingResizes)
{
    TestForm form;
    EXPECT_FALSE(form.Loaded());
    form.Load();
    EXPECT_EQ(form.events, (Events{"build", "initialize", "load"}));
    form.Show();
    form.Show();
    EXPECT_EQ(form.events, (Events{"build", "initialize", "load", "resize"}));
    EXPECT_TRUE(form.Visible());
}

TEST(FormTest, TheObjectOutlivesItsWindowAndControlsAreBuiltAnew)
{
    TestForm form;
    TextBox* box = nullptr;
    int variable = 0;
    form.build = [&](TestForm& f) { box = new TextBox(f, u"txt"); };
    form.Load();
    const QPointer<TextBox> first = box;
    box->setText(u"typed");
    variable = 7;
    form.Unload();
    EXPECT_FALSE(form.Loaded());
    form.Load();
    EXPECT_NE(first.data(), box);
    EXPECT_EQ(box->Text(), u"");
    EXPECT_EQ(variable, 7);
    EXPECT_EQ(form.events, (Events{"build", "initialize", "load", "unload", "build", "load"}));
}

TEST(FormTest, AnUnloadInsideTheUnloadEventEntersItTwiceAndEndsOnce)
{
    TestForm form;
    bool unloading = false;
    form.unloading = [&](TestForm& f) {
        if (std::exchange(unloading, true)) return;
        f.Unload();
        EXPECT_FALSE(f.Loaded());
    };
    form.Load();
    form.Unload();
    EXPECT_EQ(form.events, (Events{"build", "initialize", "load", "unload", "unload"}));
    EXPECT_EQ(Forms::Count(), 0);
}

TEST(FormTest, TheCloseBoxUnloadsAndSaysSo)
{
    TestForm form;
    std::vector<UnloadMode> modes;
    form.query = [&](UnloadMode mode) { modes.push_back(mode); };
    form.Show();
    form.window()->close();
    EXPECT_FALSE(form.Loaded());
    form.Show();
    form.Unload();
    EXPECT_EQ(modes, (std::vector{UnloadMode::ControlMenu, UnloadMode::Code}));
}

TEST(FormTest, AFormWithoutAControlBoxIsNotClosedByItsUser)
{
    TestForm form(u"frmSplash", BorderStyle::None);
    form.setControlBox(false);
    form.Show();
    form.window()->close();
    EXPECT_TRUE(form.Visible());
    form.Unload();
    EXPECT_FALSE(form.Loaded());
}

TEST(FormTest, TheOpenFormsStandInTheOrderOfLoading)
{
    TestForm a(u"a"), b(u"b"), c(u"c");
    a.Load();
    b.Load();
    c.Load();
    ASSERT_EQ(Forms::Count(), 3);
    EXPECT_EQ(Forms::item(0).Name(), u"a");
    EXPECT_EQ(Forms::item(2).Name(), u"c");
    EXPECT_THROW(Forms::item(3), RuntimeError);
    EXPECT_THROW(Forms::item(-1), RuntimeError);
    while (Forms::Count() > 1) {
        int index = 0;
        while (&Forms::item(index) == &b)
            ++index;
        Forms::item(index).Unload();
    }
    EXPECT_EQ(&Forms::item(0), &b);
}

TEST(FormTest, AModalFormReturnsOnceItIsUnloaded)
{
    TestForm owner(u"owner"), dialog(u"dialog", BorderStyle::FixedDialog);
    bool waited = false;
    setBeforeWait([&] { waited = true; });
    owner.Show();
    dialog.resize = [&](TestForm& f) {
        later([&f, &owner] {
            EXPECT_EQ(f.window()->windowModality(), Qt::ApplicationModal);
            EXPECT_EQ(f.window()->windowHandle()->transientParent(),
                      owner.window()->windowHandle());
            f.Unload();
        });
    };
    dialog.ShowModal(&owner);
    setBeforeWait({});
    EXPECT_TRUE(waited);
    EXPECT_FALSE(dialog.Loaded());
    EXPECT_TRUE(owner.Loaded());
}

TEST(FormTest, AFormMayBeShownModallyAgainAndAgainAndInsideAnother)
{
    TestForm outer(u"outer"), inner(u"inner");
    int innerShown = 0;
    inner.resize = [&](TestForm& f) {
        ++innerShown;
        later([&f] { f.Unload(); });
    };
    outer.resize = [&](TestForm& f) {
        later([&f, &inner] {
            inner.ShowModal(&f);
            inner.ShowModal(&f);
            EXPECT_TRUE(f.Visible());
            f.Unload();
        });
    };
    outer.ShowModal();
    EXPECT_EQ(innerShown, 2);
    EXPECT_EQ(Forms::Count(), 0);
}

TEST(FormTest, AModalFormUnloadedByItsOwnButtonIsSafe)
{
    TestForm dialog;
    CommandButton* ok = nullptr;
    dialog.build = [&](TestForm& f) {
        ok = new CommandButton(f, u"cmdOK");
        ok->Move(0, 0, 900, 300);
        onEvent(ok, &CommandButton::Click, [&f] { f.Unload(); });
    };
    dialog.resize = [&](TestForm&) { later([&] { click(*ok); }); };
    dialog.ShowModal();
    EXPECT_FALSE(dialog.Loaded());
}

TEST(FormTest, AFormThatUnloadsItselfInItsLoadIsNotShown)
{
    TestForm form;
    form.load = [](TestForm& f) { f.Unload(); };
    form.ShowModal();
    EXPECT_FALSE(form.Loaded());
    EXPECT_EQ(form.events, (Events{"build", "initialize", "load", "unload"}));
}

TEST(FormTest, ErrorsInEventsGoToTheHandlerAndOnesInBuildingToTheCaller)
{
    std::vector<int> untrapped;
    hooks::setUntrapped([&](const RuntimeError& error) { untrapped.push_back(error.number()); });
    TestForm form;
    form.load = [](TestForm&) { throw RuntimeError(9); };
    form.Load();
    EXPECT_EQ(untrapped, std::vector{9});
    TestForm broken;
    broken.build = [](TestForm&) { throw RuntimeError(380); };
    EXPECT_THROW(broken.Load(), RuntimeError);
    EXPECT_FALSE(broken.Loaded());
    EXPECT_EQ(Forms::Count(), 1);
    hooks::setUntrapped({});
}

TEST(FormTest, AControlOfAnUnloadedFormIsAnObjectThatIsNotSet)
{
    TestForm form;
    try {
        form.client();
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 91);
    }
    EXPECT_EQ(form.control(u"x"), nullptr);
    EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST(FormTest, TitleAndBackColourSurviveAnUnload)
{
    TestForm form;
    form.setCaption(u"PostPet Mail 表示");
    form.setBackColor(0x00FFC0C0);
    form.Load();
    form.Unload();
    form.Load();
    EXPECT_EQ(form.window()->windowTitle(), QStringLiteral("PostPet Mail 表示"));
    EXPECT_EQ(form.client().grab().toImage().pixelColor(1, 1), QColor(0xC0, 0xC0, 0xFF));
}

class FormKeysTest : public testing::Test {
protected:
    FormKeysTest()
    {
        form.build = [this](TestForm& f) {
            text = new TextBox(f, u"txtTerms");
            list = new ListBox(f, u"lst");
            add = count(f, u"comAdd");
            ok = count(f, u"cmdOK");
            cancel = count(f, u"cmdCancel");
            if (withDefaults) {
                f.setDefaultButton(ok);
                f.setCancelButton(cancel);
            }
        };
    }
    CommandButton* count(TestForm& f, TextView name)
    {
        auto* button = new CommandButton(f, name);
        onEvent(button, &CommandButton::Click, [this, button] { pressed += button->Name(); });
        return button;
    }
    void show(bool defaults)
    {
        withDefaults = defaults;
        form.Show();
    }

    TestForm form;
    bool withDefaults = false;
    TextBox* text = nullptr;
    ListBox* list = nullptr;
    CommandButton *add = nullptr, *ok = nullptr, *cancel = nullptr;
    Text pressed;
};

TEST_F(FormKeysTest, WithoutButtonsForThemEnterAndEscapeDoNothing)
{
    show(false);
    for (QWidget* target : std::initializer_list<QWidget*>{text, list, add})
        for (const auto which : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
            key(*target, which);
    EXPECT_EQ(pressed, u"");
    EXPECT_TRUE(form.Visible());
}

TEST_F(FormKeysTest, EnterAndEscapePressTheirButtonsFromAnywhere)
{
    show(true);
    text->SetFocus();
    key(*text, Qt::Key_Return);
    key(*list, Qt::Key_Enter);
    key(*text, Qt::Key_Escape);
    EXPECT_EQ(pressed, u"cmdOKcmdOKcmdCancel");
}

TEST_F(FormKeysTest, EnterOnAnotherButtonPressesThatOne)
{
    show(true);
    add->SetFocus();
    key(*add, Qt::Key_Return);
    EXPECT_EQ(pressed, u"comAdd");
}

TEST_F(FormKeysTest, ADisabledButtonIsNotPressedByItsKey)
{
    show(true);
    ok->setEnabled(false);
    cancel->setEnabled(false);
    key(*text, Qt::Key_Return);
    key(*text, Qt::Key_Escape);
    EXPECT_EQ(pressed, u"");
}

TEST_F(FormKeysTest, TheDefaultButtonIsDrawnAsOne)
{
    show(true);
    EXPECT_TRUE(ok->isDefault());
    EXPECT_FALSE(cancel->isDefault());
    EXPECT_FALSE(add->isDefault());
}

TEST_F(FormKeysTest, AControlKeepsItsFocusWhileItIsOff)
{
    show(false);
    list->SetFocus();
    form.KeepFocusDuring([&] { list->setEnabled(false); });
    EXPECT_TRUE(list->HasFocus());
    form.KeepFocusDuring([&] { list->setEnabled(true); });
    form.SettleFocus();
    EXPECT_TRUE(list->HasFocus());
    form.KeepFocusDuring([&] { list->setEnabled(false); });
    form.SettleFocus();
    EXPECT_FALSE(list->HasFocus());
    EXPECT_TRUE(form.ActiveControl()->Enabled());
}

}

}
