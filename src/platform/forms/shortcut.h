// A key that a form reacts to without a menu entry: invisible, so no caption changes.
//
// It belongs to its form's window and is destroyed when the form unloads. Like a menu
// entry it is kept back during a hold and discarded below a modal window.
#pragma once
#include <QKeySequence>
#include <QObject>

namespace tolvek {

class Form;

class Shortcut : public QObject {
    Q_OBJECT
public:
    Shortcut(Form& form, const QKeySequence& keys);

signals:
    void Pressed();

private:
    void press();
};

}
