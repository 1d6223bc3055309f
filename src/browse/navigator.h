// The navigator: the left-hand list of the main window, the way into the archive.
//
// gDisplayType decides what it shows: 0 addresses, 1 display names, 2 dates,
// any other value the filter views. For the first three the entry's text is
// the key of the mails behind it; for filter views the row number is, an index
// into gFilterRule.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

class frmTolvek;

// Empties the panes and fills the navigator for gDisplayType, with all that
// depends on it: the label above, the deletion button's caption and tool tip.
void dspSelData(frmTolvek& form);
// The label above and the list alone, as after a read of mail.
void dspNavigator(frmTolvek& form);

// Each clears both lists, then lists what the file at gDbPath holds. Reports
// under its own name; a missing database is made (the first and the last
// without asking, the other two after asking).
void dspSearch_Addr(frmTolvek& form);
void dspSearch_Name(frmTolvek& form);
void dspSearch_Date(frmTolvek& form);
// Also rewrites gFilterRule, so that row i of the list is entry i there: only
// rules of action code 0 stay in memory. Without rows nothing is reset.
void dspSearch_Filter(frmTolvek& form);

// The events of the label and the list, and of the menu entry that does as the label.
void lblNameOrAddr_Click(frmTolvek& form);
void memNameOrAddr_Click(frmTolvek& form);
void lstNameOrAddr_Click(frmTolvek& form);

}
