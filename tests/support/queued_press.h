// Presses that wait in the event queue like a user's: the program receives them the
// next time it accepts input. Also direct calls of a control, which no queue holds
// back, as made by an assistive program, a shortcut or the end of a session.
//
// The queue is the toolkit's own, in which its platforms put their input; the functions
// of Qt6::Test bypass it. Needs Qt6::GuiPrivate.
#pragma once
#include "platform/forms/form.h"
#include "platform/forms/grid.h"
#include "platform/forms/list_box.h"
#include "platform/forms/menu.h"

#include <QAbstractButton>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <string>

namespace tolvek::test {

enum class Way { Mouse, Key, Call };

// A control or menu entry by its name; kCloseBox is the close box.
struct Press {
    std::string form, control;
    Way way = Way::Mouse;
};

inline constexpr const char* kCloseBox = "close box";

namespace queued {

using WindowSystem = QWindowSystemInterface;

// Presses are close enough together to make a double click.
inline unsigned long nextMoment()
{
    static unsigned long moment = 0;
    return moment += 20;
}

inline void button(QWindow* window, const QPointF& at, Qt::MouseButtons down, QEvent::Type type)
{
    WindowSystem::handleMouseEvent<WindowSystem::AsynchronousDelivery>(
        window, nextMoment(), at, window->mapToGlobal(at), down, Qt::LeftButton, type,
        Qt::NoModifier);
}

inline void click(QWidget& target, const QPoint& pos)
{
    QWindow* const window = target.window()->windowHandle();
    if (!window || !target.isVisible()) return;
    const QPointF at = target.mapTo(target.window(), pos);
    button(window, at, Qt::LeftButton, QEvent::MouseButtonPress);
    button(window, at, Qt::NoButton, QEvent::MouseButtonRelease);
}

inline void key(QWidget& target, Qt::Key which, const QString& text = {})
{
    QWindow* const window = target.window()->windowHandle();
    if (!window || !target.isVisible()) return;
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
        WindowSystem::handleKeyEvent<WindowSystem::AsynchronousDelivery>(
            window, nextMoment(), type, which, Qt::NoModifier, text);
}

inline Form* loadedForm(const std::string& name)
{
    for (int i = 0; i < Forms::Count(); ++i)
        if (toUtf8(Forms::item(i).Name()) == name) return &Forms::item(i);
    return nullptr;
}

inline void pressList(ListBox& list, Way way)
{
    if (way == Way::Key) return key(list, Qt::Key_Down);
    click(*list.viewport(), list.visualRect(list.model()->index(0, 0)).center());
}

inline void pressGrid(Grid& grid, Way way)
{
    if (way == Way::Key) return key(grid, Qt::Key_Space);
    click(*grid.viewport(), grid.cellRect(grid.Rows() - 1, 1).center());
}

inline void pressWidget(QWidget& widget, Way way)
{
    if (way == Way::Key)
        key(widget, Qt::Key_Space, QStringLiteral(" "));
    else
        click(widget, widget.rect().center());
}

inline void closeBox(QWidget& window, Way way)
{
    if (way == Way::Call)
        QMetaObject::invokeMethod(&window, &QWidget::close, Qt::QueuedConnection);
    else
        WindowSystem::handleCloseEvent<WindowSystem::AsynchronousDelivery>(window.windowHandle());
}

// Runs at the next turn of the event loop, whatever kinds of events that turn excludes.
inline void call(QWidget& widget)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&widget))
        QMetaObject::invokeMethod(button, &QAbstractButton::click, Qt::QueuedConnection);
}

// By key: to the widget with the focus. False when there is nothing to press.
inline bool press(const Press& press)
{
    const Form* const form = loadedForm(press.form);
    QWidget* const window = form ? form->window() : nullptr;
    if (!window || !window->isVisible()) return false;
    const QString name = QString::fromStdString(press.control);
    if (press.control == kCloseBox) return closeBox(*window, press.way), true;
    if (auto* entry = window->findChild<MenuEntry*>(name))
        return QMetaObject::invokeMethod(
            &entry->action(), [entry] { entry->action().trigger(); }, Qt::QueuedConnection);
    QWidget* const widget = window->findChild<QWidget*>(name);
    if (!widget) return false;
    if (press.way == Way::Call)
        call(*widget);
    else if (auto* list = qobject_cast<ListBox*>(widget))
        pressList(*list, press.way);
    else if (auto* grid = qobject_cast<Grid*>(widget))
        pressGrid(*grid, press.way);
    else
        pressWidget(*widget, press.way);
    return true;
}

}

}
