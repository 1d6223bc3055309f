// Text from elsewhere, a mail's or a user's, with each character in the form that
// code page 932 has for it. Both go through here, so that a condition that was
// typed finds what a mail brought.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// A character and its combining mark become one, twins get their Windows forms,
// blanks of other widths become blanks, a character that is another code for one
// of ours becomes ours, invisible ones go. What the code page has stays as it is,
// but for a no-break space; so does what has no form at all.
Text ansiForms(TextView text);

}
