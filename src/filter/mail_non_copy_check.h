// Applies the do-not-read rules at import.
#pragma once
#include "filter/filter_rules.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

// 1 when a do-not-read rule matches the normalised mail, else 0. Reports its own
// failures and returns 0 then: in doubt the mail is kept. matched: receives the rule,
// for a caller that names it.
Int16 MailNonCopyCheck(const Text& SndName, const Text& SndAdd, const Text& RcvName,
                       const Text& RcvAdd, const Text& Subject, FilterRule* matched = nullptr);

}
