// Menu entries that only show a dialog.
#pragma once

namespace tolvek {

class frmTolvek;

// Shows the settings dialog, then applies the font fields to the mail text, however the
// dialog was closed.
void memEnv_Click(frmTolvek& form);
// Shows the version dialog.
void memVar_Click(frmTolvek& form);

}
