// The menu entry that opens the filter editor.
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

}
