// The program's entry.
//
// Main takes the program from the first moment of a start to the displayed main window;
// after that, events drive it. A failure on the way is reported under "Main", and the
// start goes on with the next step.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"
#include "store/ver_up300.h"

namespace tolvek {

class frmSplash;
class frmTolvek;

// What the process knows about itself. Set before Main.
struct Application {
    Int16 PrevInstance; // -1: a copy of the program is already running
};
extern Application App;

// Both forms must outlive the program's run.
void Main(frmSplash& splash, frmTolvek& window);

// The version that last wrote the settings, as the text of a number without blanks and
// leading zeros. "999" without a settings file. A value that is no number (also an
// empty one) is error 13.
Text lastVersion();

// Whether a database of that version has the old schema. The texts are compared, not
// the numbers: "210", "1000" and an empty one count as old.
bool upgradeNeeded(TextView Ver);

// The database's part of the start, from the remains of an earlier run to the
// compaction. Ends the program where going on could lose mail.
void prepareDatabase(TextView Ver, const UpgradeProgress& progress);

}
