// The two buttons that delete mail. They do nothing while nothing is selected. A
// deletion ends with the navigator refilled and nothing selected in it, the panes empty
// and the commands enabled, whatever failed in between.
//
// The freed space stays in the file until the next compaction.
#pragma once

namespace tolvek {

class frmTolvek;

// Deletes the mail of the selected subject. If it was the last mail of an address or a
// name, that entry stays listed until the search tables are rebuilt.
void comMailDel_Click(frmTolvek& form);

// Deletes all mails of the selected navigator entry; for a filter view also the rule.
void cmdAddrDel_Click(frmTolvek& form);

}
