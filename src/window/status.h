// What a command does to the main window as a whole: the commands switched off
// and on, the status text, the panes emptied.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class ResumeNext;
class frmTolvek;

// Switches the commands: all on, then some (backupMode 1: those that change the
// store; any other: nearly all) to `enabled`, then one yield; with commands on it
// keeps the user's input back. A control that lost the focus by it gets it back.
void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode);

// The mail pane as progress display: six lines in large type, black and red in
// turn at each call. show false: empty, the mail's own font and colour again,
// and the lines emptied. Yields, with the user's input kept back.
void dspStatus(frmTolvek& form, bool show, CheckedArray<Text, 6>& lines);

// What the long commands have in common. Each step is a statement of its
// caller's routine: a failed one is reported under the caller's name, and the
// next one follows.

// The mail text, the heading above it and the subjects.
void emptyPanes(const ResumeNext& on, frmTolvek& form);

// The end of the work: the status text goes, the commands come back on as far
// as the store on display lets them. Where the focus goes is the caller's.
void endWork(const ResumeNext& on, frmTolvek& form);

}
