// The menu entries that show a dialog and do no more.
#pragma once

namespace tolvek {

class frmTolvek;

// Shows the settings, and applies the font fields to the mail text however the
// dialog was left.
void memEnv_Click(frmTolvek& form);
// Shows the version.
void memVar_Click(frmTolvek& form);

}
