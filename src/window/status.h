// What commands do to the main window as a whole: disable and enable the commands, show
// the status text, empty the panes.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class ResumeNext;
class frmTolvek;

// Enables all commands, then sets some of them to `enabled` (backupMode 1: those that
// change the store; any other: nearly all), then yields once. When the commands end up
// enabled, user input is held during the yield. The control with the focus keeps it
// while it is disabled, and gives it away if it stays so at the end.
void dspEnable(frmTolvek& form, bool enabled, Int16 backupMode);

// Shows the progress text in the mail pane: six lines in large type, alternately black
// and red with each call. With show false: empties pane and lines and restores the
// mail's font and colour. Yields with user input held.
void dspStatus(frmTolvek& form, bool show, CheckedArray<Text, 6>& lines);

// Steps shared by the long commands. Each is a statement of the caller's routine: a
// failure is reported under the caller's name, and the next step follows.

// Empties the mail text and the header above it.
void emptyMailPane(const ResumeNext& on, frmTolvek& form);
// Empties the navigator and the subject list.
void emptyLists(const ResumeNext& on, frmTolvek& form);
// Empties the mail text, the header above it and the subject list.
void emptyPanes(const ResumeNext& on, frmTolvek& form);

// Ends a command: removes the status text and enables the commands that the displayed
// store allows. The caller sets the focus.
void endWork(const ResumeNext& on, frmTolvek& form);

}
