// The mail pane: a header of three lines and the stored text as it is.
#pragma once
#include "platform/dao/statement.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class frmTolvek;
struct SubjectKey;

// Shows the mail behind a row of the subject list. A mail that is gone leaves
// the pane empty without a word. Reports under "dspMail".
void dspMail(frmTolvek& form, Int16 row);

// The select with the condition of a row's mail behind it. Names stand in it too,
// though they aren't part of the key: a mail whose name was set anew since the
// list was filled is not found.
Statement ofRow(Statement select, const SubjectKey& key);

// "送信者：" or "受信者：" with the name, padded, and the address behind it.
Text headerLine(TextView label, const Text& name, const Text& address);

}
