// The subject list: one row for each stored mail of the selected navigator entry, and
// the table of their keys.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class frmTolvek;

// Fills the list from the mail table: the mails of an address, a name or a date,
// depending on gDisplayType. An empty key finds nothing and leaves the list and the
// count label empty. Reports under "dspSubject".
void dspSubject(frmTolvek& form, const Text& key);

// Fills the list from the filter results of gFilterRule(index). An index
// outside 0 to 255 is error 9. Reports under "dspSubject_Filter".
void dspSubject_Filter(frmTolvek& form, Int16 index);

// The click event: shows the selected row's mail.
void lstSubject_Click(frmTolvek& form);

}
