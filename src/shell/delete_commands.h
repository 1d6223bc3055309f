// The two buttons that delete mail. Nothing is asked or done while nothing is
// selected. A deletion ends with the navigator refilled, nothing selected in
// it, the panes empty and the commands on, whatever failed in between.
//
// The freed space stays in the file: compaction is the business of others.
#pragma once

namespace tolvek {

class frmTolvek;

// Deletes the mail of the selected subject. An address or a name whose last
// mail goes by it stays listed until the search tables are next rebuilt.
void comMailDel_Click(frmTolvek& form);

// Deletes all that the selected entry of the navigator stands for; of a filter
// view the rule itself too.
void cmdAddrDel_Click(frmTolvek& form);

}
