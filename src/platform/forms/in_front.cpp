#include "platform/forms/in_front.h"

#include "platform/system/desktop.h"

#include <QEvent>
#include <QGuiApplication>
#include <QTimer>
#include <QWidget>

namespace tolvek {

namespace {

// The window manager needs a moment to take a new window over; a request that comes
// earlier is lost.
constexpr int kPause = 60; // milliseconds
constexpr int kTries = 5;

// Owned by its box. Asks until the box has been active once, so that the user can leave
// it afterwards.
class Front : public QObject {
public:
    explicit Front(QWidget& box) : QObject(&box), box_(box)
    {
        connect(&timer_, &QTimer::timeout, this, [this] { ask(); });
        box.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Show) timer_.start(kPause);
        if (event->type() == QEvent::Hide || event->type() == QEvent::WindowActivate) timer_.stop();
        return false;
    }

private:
    void ask()
    {
        if (++tries_ == kTries) timer_.stop();
        box_.raise();
        if (QGuiApplication::platformName() == QStringLiteral("xcb")) bringToFront(box_.winId());
    }

    QWidget& box_;
    QTimer timer_;
    int tries_ = 0;
};

}

void comeToFront(QWidget& box)
{
    new Front(box);
}

}
