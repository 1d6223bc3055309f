#include "platform/forms/spoken.h"

#include "platform/forms/form_window.h"
#include "platform/forms/frames.h"
#include "platform/forms/label.h"

#include <QAccessibleWidget>

namespace tolvek {

namespace {

class SpokenForm : public QAccessibleWidget {
public:
    explicit SpokenForm(FormWindow& form) : QAccessibleWidget(&form), form_(form) {}
    // A form becomes a dialog when it is shown modally.
    QAccessible::Role role() const override
    {
        return form_.isDialog() ? QAccessible::Dialog : QAccessible::Window;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = form_.isModal();
        return state;
    }

private:
    const FormWindow& form_;
};

// The toolkit asks for it while the label is built, so the role is looked up later.
class SpokenLabel : public QAccessibleWidget {
public:
    explicit SpokenLabel(Label& label) : QAccessibleWidget(&label), label_(label) {}
    QAccessible::Role role() const override
    {
        return label_.Clickable() ? QAccessible::Button : QAccessible::StaticText;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? label_.text() : QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override
    {
        return label_.Clickable() ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& action) override
    {
        if (label_.Clickable() && action == pressAction()) label_.press();
    }

private:
    Label& label_;
};

QAccessibleInterface* spoken(const QString&, QObject* object)
{
    if (auto* form = qobject_cast<FormWindow*>(object)) return new SpokenForm(*form);
    if (auto* label = qobject_cast<Label*>(object)) return new SpokenLabel(*label);
    if (auto* line = qobject_cast<Line*>(object))
        return new QAccessibleWidget(line, QAccessible::Separator);
    if (auto* picture = qobject_cast<PictureBox*>(object))
        return new QAccessibleWidget(picture, QAccessible::Graphic);
    return nullptr;
}

}

void speakForms()
{
    static const bool installed = [] {
        QAccessible::installFactory(spoken);
        return true;
    }();
    static_cast<void>(installed);
}

}
