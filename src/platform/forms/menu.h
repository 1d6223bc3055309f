// The entries of a form's menu bar, at any depth. A caption "-" is a separator.
//
// An entry belongs to its form's window and is destroyed when the form unloads. A
// disabled entry disables its whole branch, shortcuts included.
#pragma once
#include "platform/forms/control.h"

#include <QAction>

class QKeyEvent;
class QMenu;

namespace tolvek {

class MenuEntry : public QObject {
    Q_OBJECT
public:
    MenuEntry(Form& form, TextView name, TextView caption); // in the menu bar
    MenuEntry(MenuEntry& parent, TextView name,
              TextView caption); // at the end of the parent's branch

    Text Name() const { return fromQt(objectName()); }
    Text Caption() const { return caption_; }
    void setCaption(TextView caption);
    bool Enabled() const { return action_->isEnabled(); }
    void setEnabled(bool enabled) { action_->setEnabled(enabled); }
    bool Visible() const { return action_->isVisible(); }
    void setVisible(bool visible) { action_->setVisible(visible); }
    // Shown while the pointer is on the entry. All entries of a menu have one, or none.
    const Text& ToolTipText() const { return toolTip_; }
    void setToolTipText(TextView text);
    void setShortcut(const QKeySequence& keys) { action_->setShortcut(keys); }

    QAction& action() const { return *action_; }
    QMenu* menu() const; // null if the entry has no entries below it

signals:
    void Click();

private:
    void addTo(QWidget& menuOrBar, TextView name, TextView caption);
    QMenu& branch();

    Text caption_;
    Text toolTip_;
    QAction* action_ = nullptr;
};

// Shows the entry's branch at that position of the screen; does nothing while the entry
// is disabled.
void PopupMenu(MenuEntry& entry, const QPoint& at);

// Whether the key asks for the menu of what has the focus.
bool opensMenu(const QKeyEvent& event);

}
