#include "app/guard.h"
#include "app/text_routines.h"
#include "import/mail_fields.h"

namespace tolvek {
namespace {

constexpr int kSubjectLimit = 100;
constexpr int kSubjectStart = 9; // behind "Subject" and one separator

}

void edSubject(const Text& line, Text& subject)
{
    leavePlainOnError(u"edSubject", [&] {
        Text decoded;
        Mail_StrChange_Sub(trim(line), decoded);
        // A count in bytes used as one of characters: below the limit it is
        // more than is left, which takes everything.
        const int bytes = byteLength(trim(decoded));
        const int keep = bytes > kSubjectLimit ? kSubjectLimit : bytes;
        subject = trim(mid(decoded, kSubjectStart, keep));
    });
}

}
