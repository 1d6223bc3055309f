// What a screen reader finds of a widget.
#pragma once
#include <QAccessible>
#include <QWidget>

#include <string>

namespace tolvek::test {

inline QAccessibleInterface& heard(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

inline std::string spokenName(QAccessibleInterface& item)
{
    return item.text(QAccessible::Name).toStdString();
}

}
