// The settings file read and written with the main window's place on the screen.
#pragma once

namespace tolvek {

class frmTolvek;

// iniRead and iniWrite of app/settings_file.h for this window.
void iniRead(frmTolvek& form);
void iniWrite(frmTolvek& form);

}
