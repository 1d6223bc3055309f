#include "converter/mail_text.h"

#include "converter/letter_parts.h"
#include "converter/plain_text.h"

namespace tolvek {

std::string mailText(const HeaderFields& fields, std::string_view body)
{
    Letter letter = readLetter(fields, body);
    // A text among the attachments serves only if the letter has none.
    std::string lines = std::move(letter.text.empty() ? letter.attachedText : letter.text);
    if (isBlankAnsi(lines)) {
        lines.clear();
        // An attached mail is text enough.
        if (letter.attachedMails.empty()) appendPlainLines(lines, kNoText);
    }
    return std::move(lines.append(letter.attachedMails).append(letter.furtherParts));
}

}
