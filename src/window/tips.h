// What the main window's commands do and when they do nothing, as tool tips: a command
// that ends silently changes nothing else on the screen that would say so.
#pragma once

namespace tolvek {

class frmTolvek;

// Called once its controls are built. The buttons' own tips stay; this is added below.
void explainCommands(frmTolvek& form);

}
