// A timer of a form: fires Tick every Interval milliseconds while enabled, also
// during a Tick that yields for longer than that. An interval of 0 never fires.
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
