#include "platform/forms/buttons.h"
#include "platform/forms/events.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/do_events.h"
#include "support/msg_box_script.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <stdexcept>

namespace tolvek::test {

namespace {

struct ProgramEnd {};

class EventsTest : public testing::Test {
protected:
    EventsTest() : button(form.add<CommandButton>(u"cmd"))
    {
        button.Move(0, 0, 900, 300);
        form.Show();
    }
    ~EventsTest() override
    {
        hooks::setUntrapped({});
        setEndFunction({});
    }
    void onClick(std::function<void()> slot)
    {
        onEvent(&button, &CommandButton::Click, std::move(slot));
    }
    ShownForm form;
    CommandButton& button;
};

TEST_F(EventsTest, AnErrorThatASlotLetsOutGoesToTheHandler)
{
    int number = 0;
    hooks::setUntrapped([&](const RuntimeError& error) { number = error.number(); });
    onClick([] { throw RuntimeError(13); });
    click(button);
    EXPECT_EQ(number, 13);
    EXPECT_FALSE(hasKept());
}

TEST_F(EventsTest, TheDefaultShowsThePlatformsBoxAndEndsTheProgram)
{
    MsgBoxScript boxes;
    boxes.expect(u"実行時エラー '9':\r\n\r\nインデックスが有効範囲にありません。", MsgAnswer::Ok,
                 u"Tolvek");
    bool ended = false;
    setEndFunction([&] { ended = true; });
    onClick([] { throw RuntimeError(9); });
    click(button);
    EXPECT_TRUE(ended);
    EXPECT_EQ(boxes.shown().front().icon, MsgIcon::Critical);
}

TEST_F(EventsTest, AnEndThatThrowsLeavesBehindQtNotThroughIt)
{
    onClick([] { throw ProgramEnd{}; });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_TRUE(hasKept());
    EXPECT_THROW(rethrowKept(), ProgramEnd);
    EXPECT_FALSE(hasKept());
    rethrowKept(); // nothing is kept any more
}

TEST_F(EventsTest, TheFirstKeptExceptionIsTheOneThatLeaves)
{
    runEvent([] { throw std::logic_error("first"); });
    runEvent([] { throw std::logic_error("second"); });
    try {
        rethrowKept();
        FAIL();
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "first");
    }
}

TEST_F(EventsTest, AnEndInsideAModalFormLeavesFromShowModal)
{
    TestForm dialog(u"frmDialog");
    dialog.resize = [](TestForm&) {
        QTimer::singleShot(0, [] { runEvent([] { throw ProgramEnd{}; }); });
    };
    EXPECT_THROW(dialog.ShowModal(&form), ProgramEnd);
}

TEST_F(EventsTest, AnEndInsideLoadOrUnloadLeavesFromThem)
{
    TestForm other(u"frmOther");
    other.load = [](TestForm&) { throw ProgramEnd{}; };
    EXPECT_THROW(other.Load(), ProgramEnd);
    other.unloading = [](TestForm&) { throw ProgramEnd{}; };
    EXPECT_THROW(other.Unload(), ProgramEnd);
    EXPECT_FALSE(other.Loaded());
}

TEST_F(EventsTest, AnEndInsideABoxLeavesFromIt)
{
    QTimer::singleShot(0, [] { runEvent([] { throw ProgramEnd{}; }); });
    EXPECT_THROW(MsgBox(u"a"), ProgramEnd);
}

TEST_F(EventsTest, AnEndInsideAYieldLeavesFromTheYield)
{
    QTimer::singleShot(0, [] { runEvent([] { throw ProgramEnd{}; }); });
    EXPECT_THROW(DoEventsNow(), ProgramEnd);
}

TEST_F(EventsTest, AnEndInsideTheMessageLoopLeavesFromIt)
{
    QTimer::singleShot(0, [] { runEvent([] { throw ProgramEnd{}; }); });
    EXPECT_THROW(runApplication(), ProgramEnd);
}

TEST_F(EventsTest, NothingIsYieldedToOnceTheLoopHasEnded)
{
    bool turned = false;
    QMetaObject::Connection connection;
    const auto whileQuitting = [&] {
        EXPECT_TRUE(isQuitting());
        QTimer::singleShot(0, [&] { turned = true; });
        DoEventsNow();
        EXPECT_FALSE(turned);
    };
    QTimer::singleShot(0, [&] {
        connection = QObject::connect(qApp, &QCoreApplication::aboutToQuit, whileQuitting);
        QCoreApplication::exit(3);
    });
    EXPECT_EQ(runApplication(), 3);
    QObject::disconnect(connection);
    EXPECT_FALSE(isQuitting());
    DoEventsNow();
    EXPECT_TRUE(turned);
}

TEST_F(EventsTest, TheLastWindowsEndIsNotTheProgramsEnd)
{
    prepareApplication();
    EXPECT_FALSE(QGuiApplication::quitOnLastWindowClosed());
    EXPECT_EQ(QApplication::font().family(), installedFamily(kDefaultFontName));
}

TEST_F(EventsTest, ArgumentsOfAnEventReachTheSlot)
{
    bool down = true;
    onEvent(&button, &QPushButton::clicked, [&](bool checked) { down = checked; });
    click(button);
    EXPECT_FALSE(down);
}

}

}
