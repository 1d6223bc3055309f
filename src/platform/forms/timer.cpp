#include "platform/forms/timer.h"

namespace tolvek {

Timer::Timer(Container container, TextView name, int interval)
    : QObject(container.widget()), interval_(interval)
{
    setObjectName(toQt(name));
    // Begun anew before the event: Qt's own repeating timer stands still inside
    // its event, and a command begun by a yield in there would see no tick.
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
