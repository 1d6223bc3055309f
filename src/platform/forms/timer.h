// A timer of a form: Tick comes every Interval milliseconds while it is
// enabled, also inside a Tick that yields for longer than that; an interval of
// 0 is never.
#pragma once
#include "platform/forms/control.h"

#include <QTimer>

namespace tolvek {

class Timer : public QObject {
    Q_OBJECT
public:
    Timer(Container container, TextView name, int interval = 0);
    int Interval() const { return interval_; }
    void setInterval(int milliseconds);
    bool Enabled() const { return enabled_; }
    void setEnabled(bool enabled);

signals:
    void Tick();

private:
    void apply();

    QTimer timer_;
    int interval_ = 0;
    bool enabled_ = true;
};

}
