#include "converter/str_change.h"

#include "converter/encoded_words.h"
#include "converter/iso2022jp.h"
#include "converter/plain_text.h"
#include "platform/runtime/codepage932.h"

namespace tolvek {

namespace {

Text headingText(std::string_view ansi)
{
    const Text words = fromAnsi(ansi);
    return words.find(u"=?") == Text::npos ? words : decodeEncodedWords(words);
}

// Only a heading goes through plainLine: a mail's text keeps its line ends, and the
// temp file has no harmful controls.
Text quotesChanged(Text text)
{
    for (char16_t& unit : text)
        if (unit == u'\'') unit = u'’';
    return text;
}

}

ChangedText strChange(std::string_view ansi, std::size_t limit)
{
    const bool heading = ansi.find_first_of("\r\n") == std::string_view::npos;
    // SO and SI alone may be stray bytes of code page 932 text, so a real ESC is
    // required.
    const bool escapes = looksLikeIso2022Jp(ansi) && ansi.find('\x1B') != std::string_view::npos;
    Text text = escapes ? decodeIso2022Jp(ansi) : Text();
    if (escapes && heading)
        text = plainLine(decodeEncodedWords(text));
    else if (heading)
        text = plainLine(headingText(ansi));
    else if (!escapes)
        text = fromAnsi(ansi);
    const std::string changed = toAnsi(quotesChanged(std::move(text)));
    // The length is that of the text after it was cut to the record.
    const std::string_view kept = wholePrefix(changed, limit);
    return {std::string(kept), static_cast<int>(fromAnsi(kept).size())};
}

}
