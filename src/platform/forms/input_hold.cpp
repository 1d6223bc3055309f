#include "platform/forms/input_hold.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <memory>
#include <utility>
#include <vector>

namespace tolvek {

namespace {

struct Kept {
    QPointer<QObject> target;
    std::shared_ptr<QEvent> event; // null means that `again` is to be run
    std::function<void()> again;
};

// The holds between two waits, and the input that they keep.
struct Level {
    int holds = 0;
    std::vector<Kept> kept;
};

std::vector<Level>& levels()
{
    // The first level belongs to the main event loop.
    static std::vector<Level> all(1);
    return all;
}

// Pointer moves are let through: they start nothing.
bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
        return true;
    default:
        return false;
    }
}

// Some of the toolkit's event loops don't check a queue again whose input a turn
// has left out, until something new wakes them.
void wakeLoop()
{
    if (auto* loop = QAbstractEventDispatcher::instance()) loop->wakeUp();
}

void keep(Kept kept)
{
    levels().back().kept.push_back(std::move(kept));
}

// Input in the window system's queue is kept there by the event loop; all other
// input passes this filter.
class InputFilter : public QObject {
protected:
    bool eventFilter(QObject* target, QEvent* event) override
    {
        if (!InputHold::isHeld() || !isInput(event->type())) return false;
        // A clone, because the sender destroys the event after delivery.
        keep({target, std::shared_ptr<QEvent>(event->clone()), {}});
        return true;
    }
};

void installFilter()
{
    static QPointer<QObject> filter;
    if (filter || !QCoreApplication::instance()) return;
    filter = new InputFilter;
    // Ends with the application object; a test may create another one.
    filter->setParent(QCoreApplication::instance());
    QCoreApplication::instance()->installEventFilter(filter);
}

QWidget* widgetOf(const QWindow* window)
{
    if (!window) return nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->windowHandle() == window) return widget;
    return nullptr;
}

// A menu entry, for example, belongs to the nearest widget among its parents.
QWidget* nearestWidget(QObject* object)
{
    for (; object; object = object->parent()) {
        if (auto* widget = qobject_cast<QWidget*>(object)) return widget;
        if (const auto* window = qobject_cast<QWindow*>(object)) return widgetOf(window);
    }
    return nullptr;
}

// Whose window a window is: its parent's, or that which it was given to.
const QWidget* ownerOf(const QWidget& window)
{
    if (window.parentWidget()) return window.parentWidget();
    const QWindow* const handle = window.windowHandle();
    return handle ? widgetOf(handle->transientParent()) : nullptr;
}

// The toolkit checks this only for input from the window system.
bool isBelowModal(QObject* target)
{
    const QWidget* const modal = QApplication::activeModalWidget();
    if (!modal) return false;
    const QWidget* widget = nearestWidget(target);
    // A window owned by the modal one isn't below it.
    while (widget && widget->window() != modal)
        widget = ownerOf(*widget->window());
    return !widget;
}

void deliver(const Kept& kept)
{
    if (!kept.target) return;
    // A new hold may have begun between the queueing and this turn.
    if (InputHold::isHeld()) return keep(kept);
    if (isBelowModal(kept.target)) return;
    if (kept.event)
        QCoreApplication::sendEvent(kept.target, kept.event.get());
    else
        kept.again();
}

void queue(const Kept& kept)
{
    if (!kept.target) return;
    QMetaObject::invokeMethod(
        // Queued, because the end of a hold is in the middle of a command.
        kept.target, [kept] { deliver(kept); }, Qt::QueuedConnection);
}

void queueAll(const std::vector<Kept>& all)
{
    for (const Kept& kept : all)
        queue(kept);
    wakeLoop();
}

}

InputHold::InputHold()
{
    installFilter();
    ++levels().back().holds;
}

InputHold::~InputHold()
{
    Level& level = levels().back();
    if (--level.holds == 0) queueAll(std::exchange(level.kept, {}));
}

bool InputHold::isHeld()
{
    return levels().back().holds > 0;
}

InputHold::Suspension::Suspension()
{
    levels().emplace_back();
    depth_ = levels().size();
    wakeLoop();
}

InputHold::Suspension::~Suspension()
{
    const std::vector<Kept> kept = std::move(levels().back().kept);
    levels().pop_back();
    queueAll(kept);
}

// A wait inside this one still needs its own input.
void InputHold::Suspension::end()
{
    if (levels().size() == depth_) ++levels().back().holds;
}

bool keptBack(QObject& window, std::function<void()> again)
{
    if (!InputHold::isHeld()) return false;
    keep({&window, nullptr, std::move(again)});
    return true;
}

bool isHeard(QObject& control, std::function<void()> again)
{
    return !keptBack(control, std::move(again)) && !isBelowModal(&control);
}

}
