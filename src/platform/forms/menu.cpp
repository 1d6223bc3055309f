#include "platform/forms/menu.h"
#include "platform/forms/form.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/qt_text.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace tolvek {

namespace {

// The toolkit triggers an entry below a disabled one if the request doesn't come
// through the menu.
bool isReachable(const QAction& action)
{
    if (!action.isEnabled()) return false;
    for (const QObject* holder : action.associatedObjects())
        if (const auto* menu = qobject_cast<const QMenu*>(holder))
            return isReachable(*menu->menuAction());
    return true;
}

}

MenuEntry::MenuEntry(Form& form, TextView name, TextView caption) : QObject(form.window())
{
    addTo(form.menuBar(), name, caption);
}

MenuEntry::MenuEntry(MenuEntry& parent, TextView name, TextView caption) : QObject(parent.parent())
{
    addTo(parent.branch(), name, caption);
}

void MenuEntry::addTo(QWidget& menuOrBar, TextView name, TextView caption)
{
    setObjectName(toQt(name));
    action_ = new QAction(this);
    action_->setObjectName(objectName());
    setCaption(caption);
    menuOrBar.addAction(action_);
    connect(action_, &QAction::triggered, this, [this] {
        // A shortcut or an assistive program may trigger an entry that the user
        // can't reach at present.
        if (isReachable(*action_) && isHeard(*this, [this] { action_->trigger(); })) emit Click();
    });
}

void MenuEntry::setCaption(TextView caption)
{
    caption_ = caption;
    const bool separator = caption == u"-";
    action_->setSeparator(separator);
    // Some styles paint a separator's text into its line.
    action_->setText(separator ? QString() : toQt(caption));
}

// From the first tip on a menu shows the tips of all its entries. One without a text of
// its own would show its caption.
void MenuEntry::setToolTipText(TextView text)
{
    toolTip_ = text;
    action_->setToolTip(tipText(toQt(toolTip_)));
    for (QObject* holder : action_->associatedObjects())
        if (auto* menu = qobject_cast<QMenu*>(holder)) menu->setToolTipsVisible(true);
}

QMenu* MenuEntry::menu() const
{
    return action_->menu();
}

QMenu& MenuEntry::branch()
{
    // The menu is created with the first entry below.
    if (!action_->menu()) {
        auto* menu = new QMenu(qobject_cast<QWidget*>(parent()));
        menu->setObjectName(objectName());
        action_->setMenu(menu);
    }
    return *action_->menu();
}

void PopupMenu(MenuEntry& entry, const QPoint& at)
{
    if (entry.Enabled() && entry.menu()) entry.menu()->popup(at);
}

bool opensMenu(const QKeyEvent& event)
{
    const bool shifted = event.modifiers() == Qt::ShiftModifier;
    return event.key() == Qt::Key_Menu || (shifted && event.key() == Qt::Key_F10);
}

}
