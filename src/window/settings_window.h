// Reads and writes the settings file together with the main window's position and size.
#pragma once

namespace tolvek {

class frmTolvek;

// iniRead and iniWrite of app/settings_file.h for this window.
void iniRead(frmTolvek& form);
void iniWrite(frmTolvek& form);

}
