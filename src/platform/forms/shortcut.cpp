#include "platform/forms/shortcut.h"

#include "platform/forms/form.h"
#include "platform/forms/input_hold.h"

#include <QShortcut>

namespace tolvek {

Shortcut::Shortcut(Form& form, const QKeySequence& keys) : QObject(form.window())
{
    connect(new QShortcut(keys, form.window()), &QShortcut::activated, this, &Shortcut::press);
}

void Shortcut::press()
{
    if (isHeard(*this, [this] { press(); })) emit Pressed();
}

}
