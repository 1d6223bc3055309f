// Restricts a single-line box to what a user may enter (runtime/entered_text.h),
// whatever its source: keys, the clipboard, a drop, an input method or an assistive
// program. A text set by code stays unchanged until the user edits it.
#pragma once
#include <QObject>

class QInputMethodEvent;
class QLineEdit;

namespace tolvek {

class EntryFilter : public QObject {
    Q_OBJECT
public:
    explicit EntryFilter(QLineEdit& edit); // owned by `edit`
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
