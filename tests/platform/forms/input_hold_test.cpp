#include "platform/forms/buttons.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/text_box.h"
#include "platform/forms/timer.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "support/queued_press.h"
#include "test_form.h"

#include <QAccessible>
#include <QApplication>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tolvek::test {
namespace {

// A form with two buttons, a text box and a menu entry below another one. Each
// press is recorded.
class InputHoldTest : public ::testing::Test {
protected:
    InputHoldTest()
    {
        form.build = [this](TestForm& built) { buildOn(built); };
        form.Show();
        DoEventsNow();
    }
    ~InputHoldTest() override
    {
        form.Unload();
        DoEventsNow();
    }

    void buildOn(TestForm& built)
    {
        one = new CommandButton(built, u"one");
        one->Move(0, 0, 1500, 600);
        two = new CommandButton(built, u"two");
        two->Move(3000, 0, 1500, 600);
        text = new TextBox(built, u"text");
        text->Move(0, 1500, 3000, 400);
        branch = new MenuEntry(built, u"branch", u"branch");
        entry = new MenuEntry(*branch, u"entry", u"entry");
        onEvent(one, &CommandButton::Click, [this] { pressed.emplace_back("one"); });
        onEvent(two, &CommandButton::Click, [this] { pressed.emplace_back("two"); });
        onEvent(entry, &MenuEntry::Click, [this] { pressed.emplace_back("entry"); });
    }
    static void queueClick(QWidget& widget) { queued::click(widget, widget.rect().center()); }
    static void postClick(QWidget& widget)
    {
        const QPointF pos = widget.rect().center();
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            QCoreApplication::postEvent(&widget, new QMouseEvent(type, pos, widget.mapToGlobal(pos),
                                                                 Qt::LeftButton, Qt::LeftButton,
                                                                 Qt::NoModifier));
    }
    // Presses the buttons and the entry in every possible way.
    void pressAll()
    {
        queueClick(*two);
        postClick(*one);
        two->click();
        entry->action().trigger();
        QTest::mouseClick(one, Qt::LeftButton);
    }
    using Presses = std::vector<std::string>;
    static Presses sorted(Presses all)
    {
        std::sort(all.begin(), all.end());
        return all;
    }

    Presses pressed;
    TestForm form;
    CommandButton *one = nullptr, *two = nullptr;
    TextBox* text = nullptr;
    MenuEntry *branch = nullptr, *entry = nullptr;
};

TEST_F(InputHoldTest, QueuedPressesAreWhatTheToolkitCountsAsInput)
{
    queueClick(*one);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    EXPECT_EQ(pressed, Presses{});
    queueClick(*two); // wakes the queue, which is idle after such a turn
    QCoreApplication::processEvents();
    EXPECT_EQ(pressed, (Presses{"one", "two"}));
}

TEST_F(InputHoldTest, NoPressArrivesInAHoldAndEachDoesAfterwards)
{
    {
        const InputHold hold;
        pressAll();
        for (int turn = 0; turn < 3; ++turn)
            DoEventsNow();
        EXPECT_EQ(pressed, Presses{});
    }
    EXPECT_EQ(pressed, Presses{}) << "not before the next turn";
    DoEventsNow();
    EXPECT_EQ(sorted(pressed), (Presses{"entry", "one", "one", "two", "two"}));
}

TEST_F(InputHoldTest, TheCloseBoxWaitsToo)
{
    for (const Way way : {Way::Mouse, Way::Call}) {
        form.Show();
        DoEventsNow();
        {
            const InputHold hold;
            queued::closeBox(*form.window(), way);
            DoEventsNow();
            DoEventsNow();
            EXPECT_TRUE(form.Loaded());
        }
        DoEventsNow();
        EXPECT_FALSE(form.Loaded());
    }
}

TEST_F(InputHoldTest, WhatWasKeptArrivesInItsOrder)
{
    {
        const InputHold hold;
        two->click();
        entry->action().trigger();
        QTest::mouseClick(one, Qt::LeftButton);
        two->click();
    }
    DoEventsNow();
    EXPECT_EQ(pressed, (Presses{"two", "entry", "one", "two"}));
}

// Input methods deliver their keys without the window system's queue.
TEST_F(InputHoldTest, KeysAndComposedTextWaitToo)
{
    {
        const InputHold hold;
        QTest::keyClick(text, Qt::Key_A);
        QInputMethodEvent composed;
        composed.setCommitString(QStringLiteral("花"));
        QCoreApplication::sendEvent(text, &composed);
        DoEventsNow();
        EXPECT_EQ(text->Text(), u"");
    }
    DoEventsNow();
    EXPECT_EQ(text->Text(), u"a花");
}

TEST_F(InputHoldTest, AnAssistiveProgramsActionWaits)
{
    QAccessibleInterface* const access = QAccessible::queryAccessibleInterface(&form.menuBar());
    ASSERT_TRUE(access && access->childCount() > 0);
    QAccessibleInterface* const item = access->child(0)->child(0);
    ASSERT_TRUE(item && item->childCount() > 0);
    {
        const InputHold hold;
        item->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        DoEventsNow();
        EXPECT_EQ(pressed, Presses{});
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{"entry"});
}

TEST_F(InputHoldTest, AControlThatIsOffByThenSwallowsIt)
{
    {
        const InputHold hold;
        pressAll();
        for (CommandButton* button : {one, two})
            button->setEnabled(false);
        branch->setEnabled(false);
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{});
}

TEST_F(InputHoldTest, AControlThatIsGoneByThenSwallowsIt)
{
    {
        const InputHold hold;
        pressAll();
        form.Unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{});
}

TEST_F(InputHoldTest, AWindowBelowAModalOneSwallowsIt)
{
    TestForm dialog(u"frmAbove", BorderStyle::FixedDialog);
    {
        const InputHold hold;
        pressAll();
        dialog.Load();
        dialog.window()->setWindowModality(Qt::ApplicationModal);
        dialog.Show();
    }
    DoEventsNow();
    dialog.Unload();
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{});
}

// The help stays usable while a dialog waits.
TEST_F(InputHoldTest, AWindowGivenToTheModalOneIsPressed)
{
    TestForm dialog(u"frmAbove", BorderStyle::FixedDialog);
    dialog.Load();
    dialog.window()->setWindowModality(Qt::ApplicationModal);
    dialog.Show();
    form.window()->windowHandle()->setTransientParent(dialog.window()->windowHandle());
    {
        const InputHold hold;
        two->click();
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{"two"});
    dialog.Unload();
}

TEST_F(InputHoldTest, HoldsNest)
{
    const InputHold outer;
    {
        const InputHold inner;
        pressAll();
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{});
}

TEST_F(InputHoldTest, WhatWasKeptWaitsForAHoldThatBeginsBeforeItsTurn)
{
    {
        const InputHold hold;
        two->click();
    }
    {
        const InputHold next;
        DoEventsNow();
        EXPECT_EQ(pressed, Presses{});
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{"two"});
}

TEST_F(InputHoldTest, AWaitForTheUserTakesInputAndLeavesWhatWasKeptToItsHold)
{
    {
        const InputHold hold;
        two->click();
        {
            const WaitScope wait([] {});
            one->click();
            {
                const InputHold inside; // for what is loaded during the wait
                entry->action().trigger();
            }
            DoEventsNow();
            EXPECT_EQ(pressed, (Presses{"one", "entry"}));
        }
        EXPECT_TRUE(InputHold::isHeld());
        DoEventsNow();
        EXPECT_EQ(pressed, (Presses{"one", "entry"}));
    }
    DoEventsNow();
    EXPECT_EQ(pressed, (Presses{"one", "entry", "two"}));
}

TEST_F(InputHoldTest, ABoxInAHoldCanBeAnsweredAndNothingBelowItPressed)
{
    bool answered = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        const QWidget* const box = QApplication::activeModalWidget();
        if (!box || std::exchange(answered, true)) return;
        queueClick(*two);
        one->click();
        entry->action().trigger();
        queueClick(*box->findChild<QPushButton*>());
    });
    user.start(0);
    {
        const InputHold hold;
        MsgBox(u"text");
        EXPECT_TRUE(InputHold::isHeld());
    }
    DoEventsNow();
    EXPECT_TRUE(answered);
    EXPECT_EQ(pressed, Presses{});
}

// A double click on a dialog's last button: the second press falls on what lies below.
TEST_F(InputHoldTest, WhatIsPressedWhileADialogClosesWaitsForItsCaller)
{
    TestForm dialog(u"frmDialog");
    CommandButton* close = nullptr;
    dialog.build = [&](TestForm& built) {
        close = new CommandButton(built, u"close");
        onEvent(close, &CommandButton::Click, [&] { dialog.Unload(); });
    };
    QTimer::singleShot(0, [&] {
        queueClick(*close);
        queueClick(*one);
    });
    dialog.ShowModal();
    EXPECT_EQ(pressed, Presses{});
    {
        const InputHold hold;
        DoEventsNow();
        EXPECT_EQ(pressed, Presses{});
    }
    DoEventsNow();
    EXPECT_EQ(pressed, Presses{"one"});
}

TEST_F(InputHoldTest, ABoxIsAnsweredThoughTheDialogBelowItIsGone)
{
    TestForm dialog(u"frmDialog");
    bool answered = false;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        const QWidget* const top = QApplication::activeModalWidget();
        auto* const ok = top ? top->findChild<QPushButton*>() : nullptr;
        if (!ok || std::exchange(answered, true)) return;
        dialog.Unload();
        queueClick(*ok);
    });
    QTimer::singleShot(0, [&] {
        user.start(0);
        MsgBox(u"text");
    });
    dialog.ShowModal();
    EXPECT_TRUE(answered);
    EXPECT_FALSE(InputHold::isHeld());
}

TEST_F(InputHoldTest, AnExceptionEndsTheHold)
{
    const auto failing = [] {
        const InputHold hold;
        const WaitScope wait([] {});
        const InputHold inside;
        throw RuntimeError(7);
    };
    EXPECT_THROW(failing(), RuntimeError);
    EXPECT_FALSE(InputHold::isHeld());
}

TEST_F(InputHoldTest, TicksAndPaintingGoOnInAHold)
{
    struct Painted : QWidget {
        using QWidget::QWidget;
        void paintEvent(QPaintEvent*) override { ++times; }
        int times = 0;
    } painted(&form.client());
    painted.show();
    DoEventsNow();
    const int before = painted.times;
    int ticks = 0;
    Timer timer(form, u"timer", 1);
    onEvent(&timer, &Timer::Tick, [&] { ++ticks; });
    const InputHold hold;
    painted.update();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ticks > 0 && painted.times > before; }, 60000));
}

TEST_F(InputHoldTest, ALoadAndAnUnloadKeepTheOtherFormsPressesBack)
{
    TestForm other(u"frmOther");
    int yields = 0;
    other.load = other.unloading = [&](TestForm&) {
        ++yields;
        pressAll();
        DoEventsNow();
        EXPECT_EQ(pressed, Presses{});
    };
    other.Load();
    DoEventsNow();
    EXPECT_EQ(std::exchange(pressed, {}).size(), 5u);
    other.Unload();
    DoEventsNow();
    EXPECT_EQ(pressed.size(), 5u);
    EXPECT_EQ(yields, 2);
}

TEST_F(InputHoldTest, AnEntryBelowOneThatIsOffIsNotTriggeredByACall)
{
    branch->setEnabled(false);
    entry->action().trigger();
    EXPECT_EQ(pressed, Presses{});
    branch->setEnabled(true);
    entry->action().trigger();
    EXPECT_EQ(pressed, Presses{"entry"});
}

}
}
