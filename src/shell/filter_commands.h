// The menu entries for filter rules: the editor, and the filter run.
#pragma once

namespace tolvek {

class frmFilter;
class frmTolvek;

// Shows the editor; panes and subject list are empty afterwards. Unless the editor was
// left by its Cancel button, the rules are written and the results rebuilt, changed or
// not. After a Cancel the results stay, though an order stored from within the editor
// stays stored too. `editor` must live as long as the program, since its forms remember
// their values.
void memFilter_Click(frmTolvek& form, frmFilter& editor);

// Rebuilds the filter results from gFilterRule (tblFilter isn't read first), then lists
// the navigator. Panes and subject list are empty afterwards.
void memFilterGo_Click(frmTolvek& form);

}
