// Operates the real controls with presses, clicks and keys, as a user does.
//
// A key is sent to the widget itself, whether or not its window is active, so that
// tests don't depend on a window manager. An exception that an event kept (the end of
// the program, as a test's hook throws it) is rethrown here afterwards.
//
// Needs Qt6::Test: find_package(Qt6 REQUIRED COMPONENTS Test) and LINKS Qt6::Test.
#pragma once
#include "platform/forms/events.h"
#include "platform/forms/form.h"
#include "platform/forms/grid.h"
#include "platform/forms/list_box.h"

#include <QTest>

#include <stdexcept>

namespace tolvek::test {

inline void pressAt(QWidget& target, const QPoint& pos, Qt::MouseButton button = Qt::LeftButton,
                    Qt::KeyboardModifiers keys = {})
{
    QTest::mouseClick(&target, button, keys, pos);
    rethrowKept();
}

inline void click(QWidget& control)
{
    pressAt(control, control.rect().center());
}

inline QPoint entryPos(const ListBox& list, int index)
{
    return list.visualRect(list.model()->index(index, 0)).center();
}

inline void clickEntry(ListBox& list, int index, Qt::MouseButton button = Qt::LeftButton,
                       Qt::KeyboardModifiers keys = {})
{
    pressAt(*list.viewport(), entryPos(list, index), button, keys);
}

inline void clickCell(Grid& grid, int row, int col)
{
    pressAt(*grid.viewport(), grid.cellRect(row, col).center());
}

inline void key(QWidget& control, Qt::Key which, Qt::KeyboardModifiers keys = {})
{
    QTest::keyClick(&control, which, keys);
    rethrowKept();
}

// The control with that name and type; an error if the form has none.
template <class Kind> Kind& find(const Form& form, TextView name)
{
    auto* found = qobject_cast<Kind*>(form.control(name));
    if (!found) throw std::logic_error("no such control: " + toUtf8(name));
    return *found;
}

}
