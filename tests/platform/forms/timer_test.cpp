#include "platform/forms/events.h"
#include "platform/forms/timer.h"
#include "test_form.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

constexpr int kPatience = 60000; // milliseconds, on a machine that is busy

class TimerTest : public testing::Test {
protected:
    Timer& start(int interval)
    {
        form.Load();
        auto* timer = new Timer(form, u"Timer1", interval);
        onEvent(timer, &Timer::Tick, [this] { ++ticks; });
        return *timer;
    }
    ShownForm form;
    int ticks = 0;
};

TEST_F(TimerTest, TicksWhileItIsEnabled)
{
    Timer& timer = start(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks >= 3; }, kPatience));
    timer.setEnabled(false);
    const int before = ticks;
    QTest::qWait(5);
    EXPECT_EQ(ticks, before);
    EXPECT_EQ(timer.Interval(), 1);
}

TEST_F(TimerTest, AnIntervalOfZeroNeverTicks)
{
    Timer& timer = start(0);
    QTest::qWait(5);
    EXPECT_EQ(ticks, 0);
    EXPECT_TRUE(timer.Enabled());
    timer.setInterval(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks > 0; }, kPatience));
}

TEST_F(TimerTest, ATickThatYieldsForLongIsNoObstacleToTheNext)
{
    form.Load();
    auto* timer = new Timer(form, u"Timer1", 1);
    bool nested = false;
    onEvent(timer, &Timer::Tick, [&] {
        if (++ticks == 1) nested = QTest::qWaitFor([this] { return ticks >= 3; }, kPatience);
    });
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks >= 4; }, kPatience));
    EXPECT_TRUE(nested);
}

TEST_F(TimerTest, ATickMaySwitchItsTimerOff)
{
    Timer& timer = start(1);
    onEvent(&timer, &Timer::Tick, [&] { timer.setEnabled(false); });
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks > 0; }, kPatience));
    QTest::qWait(5);
    EXPECT_EQ(ticks, 1);
}

TEST_F(TimerTest, NoTickComesOnceTheFormIsUnloaded)
{
    start(1);
    EXPECT_TRUE(QTest::qWaitFor([this] { return ticks > 0; }, kPatience));
    form.Unload();
    const int before = ticks;
    QTest::qWait(5);
    EXPECT_EQ(ticks, before);
}

}

}
