// Brings a box to the front when it is shown, with the keyboard focus. The window
// manager leaves it below if another program is active, for example the one that has
// just been started for a reply.
#pragma once

class QWidget;

namespace tolvek {

// For a dialog that isn't shown yet.
void comeToFront(QWidget& box);

}
