// The entries of a form's menu bar, to any depth. A caption "-" is a separator.
//
// An entry belongs to its form's window and goes with the unload. An entry that
// is off takes its whole branch with it, shortcuts included.
#pragma once
#include "platform/forms/control.h"

#include <QAction>

class QMenu;

namespace tolvek {

class MenuEntry : public QObject {
    Q_OBJECT
public:
    MenuEntry(Form& form, TextView name, TextView caption); // on the bar
    MenuEntry(MenuEntry& parent, TextView name,
              TextView caption); // at the end of the parent's branch

    Text Name() const { return fromQt(objectName()); }
    Text Caption() const { return caption_; }
    void setCaption(TextView caption);
    bool Enabled() const { return action_->isEnabled(); }
    void setEnabled(bool enabled) { action_->setEnabled(enabled); }
    bool Visible() const { return action_->isVisible(); }
    void setVisible(bool visible) { action_->setVisible(visible); }
    void setShortcut(const QKeySequence& keys) { action_->setShortcut(keys); }

    QAction& action() const { return *action_; }
    QMenu* menu() const; // of an entry with entries below, else null

signals:
    void Click();

private:
    void addTo(QWidget& menuOrBar, TextView name, TextView caption);
    QMenu& branch();

    Text caption_;
    QAction* action_ = nullptr;
};

// Shows the entry's branch at the pointer; does nothing while the entry is off.
void PopupMenu(MenuEntry& entry);

}
