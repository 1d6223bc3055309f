#include "converter/mail_text.h"

#include "converter/ascii.h"
#include "converter/letter_parts.h"

namespace tolvek {

Text mailText(const HeaderFields& fields, std::string_view body)
{
    const Letter letter = readLetter(fields, body);
    Text text = letter.text.empty() ? letter.attachedText : letter.text;
    if (isBlankText(text)) text = letter.attachedMails.empty() ? Text(kNoText) : Text();
    endLine(text);
    text += letter.attachedMails;
    endLine(text);
    return text + letter.furtherParts;
}

}
