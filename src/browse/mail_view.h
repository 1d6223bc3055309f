// The mail pane: three header lines and the stored text, unchanged.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class frmTolvek;

// Shows the mail of a row of the subject list. A mail that no longer exists silently
// leaves the pane empty. Reports under "dspMail".
void dspMail(frmTolvek& form, Int16 row);

// `label` ("送信者：" or "受信者：") with the name, padded, followed by the address.
Text headerLine(TextView label, const Text& name, const Text& address);

}
