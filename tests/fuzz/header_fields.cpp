// One mail's head: addresses, encoded words, dates, content types.
#include "converter/conversion.h"
#include "converter/mail_date.h"
#include "fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tolvek;
    RawMail mail;
    mail.head = fuzz::bytesOf(data, size);
    mail.body = "text\n";
    const TempMail converted = convertMail(mail);
    fuzz::require(converted.date.empty() || parseMailDate(converted.date).has_value());
    fuzz::require(!converted.lines.empty());
    return 0;
}
