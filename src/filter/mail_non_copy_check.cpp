#include "filter/mail_non_copy_check.h"

#include "app/guard.h"

namespace tolvek {

namespace {

bool contains(const Text& text, const Text& condition)
{
    return inStr(text, condition, Compare::TextMode) != 0;
}

}

// The values are compared untrimmed, already cut to their stored lengths. The store
// compares differently when it lists a rule's mails; the difference is intended. Kept
// quirk: code 5 has no branch, so such a rule does nothing.
Int16 MailNonCopyCheck(const Text& SndName, const Text& SndAdd, const Text& RcvName,
                       const Text& RcvAdd, const Text& Subject, FilterRule* matched)
{
    const auto matches = [&](const FilterRule& rule) {
        switch (rule.TermsCode) {
        case 0:
            return Subject == rule.Data;
        case 1:
            return inStrB(Subject, rule.Data) != 0;
        case 2:
            return SndAdd == rule.Data || RcvAdd == rule.Data;
        case 3:
            return contains(SndAdd, rule.Data) || contains(RcvAdd, rule.Data);
        case 4:
            return SndName == rule.Data || RcvName == rule.Data;
        default:
            return false;
        }
    };
    Int16 result = 0;
    leavePlainOnError(u"MailNonCopyCheck", [&] {
        for (int i = 0; i < gNonCopyRuleCnt && result == 0; ++i) {
            result = matches(gNonCopyRule[i]) ? 1 : 0;
            if (result != 0 && matched != nullptr) *matched = gNonCopyRule[i];
        }
    });
    return result;
}

}
