#include "platform/runtime/entered_text.h"

#include "platform/runtime/ansi_forms.h"
#include "platform/runtime/codepage932.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr TextView kLineEnds = u"\r\n\u0085\u2028\u2029";

bool isControl(char16_t c)
{
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

Text entered(TextView text, TextView keptControls)
{
    Text kept = ansiForms(text);
    std::erase_if(kept, [&](char16_t c) {
        if (isControl(c)) return keptControls.find(c) == TextView::npos;
        // Also removes both halves of a surrogate pair, which the code page never
        // has.
        return !fitsAnsi(TextView(&c, 1));
    });
    return kept;
}

}

Text enteredLine(TextView text)
{
    return entered(text.substr(0, text.find_first_of(kLineEnds)), {});
}

Text enteredLines(TextView text)
{
    Text lines(text);
    for (char16_t& c : lines)
        if (c == u'\u0085' || c == u'\u2028' || c == u'\u2029') c = u'\n';
    return entered(lines, u"\r\n\t");
}

}
