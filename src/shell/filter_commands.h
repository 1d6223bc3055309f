// The menu entries around the rules: the editor, and sorting the archive anew.
#pragma once

namespace tolvek {

class frmFilter;
class frmTolvek;

// Shows the editor; panes and subject list end empty. Left in any way but by
// its Cancel, the rules are written and the results built anew, changed or not.
// After a Cancel the results stay as they are, though an order stored from
// within the editor stays stored. `editor` lives as long as the program, since
// its forms remember what they held.
void memFilter_Click(frmTolvek& form, frmFilter& editor);

// Rebuilds the filter results from gFilterRule as it stands (tblFilter isn't
// read first), then lists the navigator. Panes and subject list end empty.
void memFilterGo_Click(frmTolvek& form);

}
