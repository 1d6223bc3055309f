// Holds a box of one line to what a user may enter (runtime/entered_text.h),
// whatever way it comes in: keys, the clipboard, a drop, an input method, a
// program that reads the screen. A text set by code stays as it is until the
// user changes it.
#pragma once
#include <QObject>

class QInputMethodEvent;
class QLineEdit;

namespace tolvek {

class EntryFilter : public QObject {
    Q_OBJECT
public:
    explicit EntryFilter(QLineEdit& edit); // lives with `edit`
    void setByCode(const QString& text);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void paste();
    bool commit(const QInputMethodEvent& event);
    void hold();

    QLineEdit& edit_;
    bool byCode_ = false;
};

}
