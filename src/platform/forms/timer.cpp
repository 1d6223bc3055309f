#include "platform/forms/timer.h"

namespace tolvek {

Timer::Timer(Container container, TextView name, int interval)
    : QObject(container.widget()), interval_(interval)
{
    setObjectName(toQt(name));
    // Restarted before the event: Qt's repeating timer doesn't fire while its event
    // is running, and a command started by a yield inside it would see no tick.
    connect(&timer_, &QTimer::timeout, this, [this] {
        apply();
        emit Tick();
    });
    timer_.setSingleShot(true);
    apply();
}

void Timer::setInterval(int milliseconds)
{
    interval_ = milliseconds;
    apply();
}

void Timer::setEnabled(bool enabled)
{
    enabled_ = enabled;
    apply();
}

void Timer::apply()
{
    if (enabled_ && interval_ > 0)
        timer_.start(interval_);
    else
        timer_.stop();
}

}
