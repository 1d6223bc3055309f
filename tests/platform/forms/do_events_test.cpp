#include "platform/runtime/do_events.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>

namespace tolvek::test {

namespace {

using Clock = std::chrono::steady_clock;

// Counts the turns in which its posted events are delivered.
class TurnCounter : public QObject {
public:
    int turns = 0;
    void post() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::User) ++turns;
        return QObject::event(event);
    }
};

TEST(DoEventsTest, ManyCallsAreFewTurns)
{
    TurnCounter counter;
    const auto start = Clock::now();
    for (int i = 0; i < 20000; ++i) {
        counter.post();
        if (counter.turns == 0 || i % 2 == 0) DoEvents();
        QCoreApplication::removePostedEvents(&counter);
    }
    const auto spent = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
    EXPECT_LE(counter.turns, spent.count() / 5 + 1);
}

TEST(DoEventsTest, ATickIsNotStarvedByAnyNumberOfCalls)
{
    bool ticked = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ticked = true; });
    timer.start(1);
    for (const auto limit = Clock::now() + std::chrono::seconds(20);
         !ticked && Clock::now() < limit;)
        DoEvents();
    EXPECT_TRUE(ticked);
}

TEST(DoEventsTest, TheImmediateFormAlwaysMakesATurn)
{
    TurnCounter counter;
    for (int i = 0; i < 3; ++i) {
        counter.post();
        DoEventsNow();
    }
    EXPECT_EQ(counter.turns, 3);
}

TEST(DoEventsTest, YieldsMayBeNested)
{
    int inner = 0;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] { ++inner; });
        DoEventsNow();
    });
    DoEventsNow();
    EXPECT_EQ(inner, 1);
}

TEST(DoEventsTest, AnObjectWhoseSlotYieldsIsNotDeletedUnderIt)
{
    auto* object = new QObject;
    const QPointer<QObject> alive(object);
    bool stoodInside = false;
    QTimer::singleShot(0, [&] {
        object->deleteLater();
        DoEventsNow();
        stoodInside = !alive.isNull();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return alive.isNull(); }, 60000));
    EXPECT_TRUE(stoodInside);
}

}

}
