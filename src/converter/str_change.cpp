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

// Line ends and other controls of a mail's text stay as they are; the temp
// file holds none that do harm.
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
    const bool escapes = looksLikeIso2022Jp(ansi) && ansi.find('\x1B') != std::string_view::npos;
    Text text = escapes ? decodeIso2022Jp(ansi) : Text();
    if (escapes && heading)
        text = plainLine(decodeEncodedWords(text));
    else if (heading)
        text = plainLine(headingText(ansi));
    else if (!escapes)
        text = fromAnsi(ansi);
    const std::string changed = toAnsi(quotesChanged(std::move(text)));
    const std::string_view kept = wholePrefix(changed, limit);
    return {std::string(kept), static_cast<int>(fromAnsi(kept).size())};
}

}
