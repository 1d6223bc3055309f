// The navigator: the left-hand list of the main window, where browsing starts.
//
// gDisplayType selects its contents: 0 addresses, 1 display names, 2 dates, any other
// value filter views. For the first three, an entry's text is the key of its mails. For
// filter views the key is the row number, an index into gFilterRule.
#pragma once
#include "platform/runtime/int16.h"

namespace tolvek {

class frmTolvek;

// Whether the navigator lists the filter rules. Kept quirk: an unknown value from
// the settings file does so too.
bool isFilterView();

// Empties the panes and fills the navigator for gDisplayType, including the label above
// it and the deletion button's caption and tool tip.
void dspSelData(frmTolvek& form);
// Sets only the label and the list, as after a read of mail.
void dspNavigator(frmTolvek& form);

// Each clears both lists, then lists what the file at gDbPath holds. Each reports under
// its own name. A missing database is created: by the first and the last without
// asking, by the other two after asking.
void dspSearch_Addr(frmTolvek& form);
void dspSearch_Name(frmTolvek& form);
void dspSearch_Date(frmTolvek& form);
// Also rewrites gFilterRule so that row i of the list is entry i: only rules with
// action code 0 stay in memory. When there are no rows, nothing is reset.
void dspSearch_Filter(frmTolvek& form);

// The events of the label and of the list, and of the menu entry that acts like the
// label.
void lblNameOrAddr_Click(frmTolvek& form);
void memNameOrAddr_Click(frmTolvek& form);
void lstNameOrAddr_Click(frmTolvek& form);

}
