// The mail pane: a header of three lines and the stored text as it is.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class frmTolvek;

// Shows the mail behind a row of the subject list. A mail that is gone leaves
// the pane empty without a word. Reports under "dspMail".
void dspMail(frmTolvek& form, Int16 row);

// "送信者：" or "受信者：" with the name, padded, and the address behind it.
Text headerLine(TextView label, const Text& name, const Text& address);

}
