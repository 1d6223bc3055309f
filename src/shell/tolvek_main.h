// The program's entry.
//
// Main brings the program from the first moment of a start to the main window
// on the screen; what comes then is driven by its user. A failure on the way is
// reported under "Main", and the start goes on with the next step.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"
#include "store/ver_up300.h"

namespace tolvek {

class frmSplash;
class frmTolvek;

// What the process knows of itself. Set before Main.
struct Application {
    Int16 PrevInstance; // -1: a copy of the program is already running
};
extern Application App;

// Both forms outlive the program's run.
void Main(frmSplash& splash, frmTolvek& window);

// The version that last wrote the settings, as the text of a number: without
// blanks and leading zeros. "999" without a settings file; what is no number
// (an empty value too) is error 13.
Text lastVersion();

// Whether that version's database is of the old schema. The texts are compared,
// not the numbers: "210", "1000" and an empty one count as old.
bool upgradeNeeded(TextView Ver);

// The database's part of a start, from what an earlier run left behind to the
// compaction. It ends the program where going on would cost mail.
void prepareDatabase(TextView Ver, const UpgradeProgress& progress);

}
