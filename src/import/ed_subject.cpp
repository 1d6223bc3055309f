#include "app/guard.h"
#include "app/text_routines.h"
#include "import/mail_fields.h"

namespace tolvek {
namespace {

constexpr int kSubjectLimit = 100;
constexpr int kSubjectStart = 9; // after "Subject" and one separator

}

void edSubject(const Text& line, Text& subject)
{
    leavePlainOnError(u"edSubject", [&] {
        Text decoded;
        Mail_StrChange_Sub(trim(line), decoded);
        // Kept: a byte count is used as a character count. Below the limit it is at
        // least the number of characters left, so everything is taken.
        const int bytes = byteLength(trim(decoded));
        const int keep = bytes > kSubjectLimit ? kSubjectLimit : bytes;
        subject = trim(mid(decoded, kSubjectStart, keep));
    });
}

}
