// Subjects of answers.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// The folded subject without what mail programs put before it in an answer ("Re:",
// "Re^2:", "Fw:", "返信:"), so that a letter and its answers have the same.
Text conversationSubject(TextView subject);

}
