// The menu entry that sorts the archive by the user's rules anew.
#pragma once

namespace tolvek {

class frmTolvek;

// Rebuilds the filter results from gFilterRule as it stands (tblFilter isn't
// read first), then lists the navigator. Panes and subject list end empty.
void memFilterGo_Click(frmTolvek& form);

}
