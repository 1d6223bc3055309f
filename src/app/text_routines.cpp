#include "app/text_routines.h"

#include "app/converter_library.h"
#include "app/guard.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"

namespace tolvek {

namespace {

void showStrChange(const Text& text)
{
    MsgBox(text, MsgButtons::Ok, u"StrChange");
}

Text lengthFault(Int16 length, TextView what, const Text& value)
{
    return u"変更対象文字数（" + format(length, u"000") + u"）" + Text(what) + u"（" + value +
           u"）の相関エラーです。";
}

// Kept quirk: the loop bound is the length in code page 932 bytes of the trimmed text,
// but positions count characters of the untrimmed text. With double-byte characters the
// loop runs past the end, where nothing matches. With leading blanks it stops before
// the end.
Text replacedInPlace(Text text, int lastPosition, TextView search, TextView replacement, int length)
{
    const auto size = static_cast<std::size_t>(length);
    for (int p = 1; p <= lastPosition && p <= static_cast<int>(text.size()); ++p)
        if (TextView(text).substr(static_cast<std::size_t>(p) - 1, size) == search)
            overwrite(text, p, replacement, length);
    return text;
}

// False when the lengths don't fit together; the user has been informed then.
bool lengthsFit(const Text& source, const Text& search, Int16 length)
{
    if (ansiLength(trim(search)) < length) {
        showStrChange(lengthFault(length, u"入力文字列", search));
        return false;
    }
    const int sourceLength = ansiLength(trim(source));
    if (sourceLength < length) {
        showStrChange(lengthFault(length, u"入力文字数", decimal(sourceLength)));
        return false;
    }
    return true;
}

}

void Mail_StrChange_Sub(const Text& source, Text& result)
{
    ResumeNext on{u"Mail_StrChange_Sub"};
    const Text trimmed = trim(source);
    if (trimmed.empty()) {
        result.clear();
        return;
    }
    // Blanks are trimmed, line ends aren't: a block of one empty line is passed through
    // as it is.
    if (trimmed == kCrLf) {
        result = source;
        return;
    }
    Text output;
    Int16 length = 0;
    on([&] { converterLibrary().Mail_StrChange(source, output, length); });
    on([&] { result = left(output, length); });
    on([] { DoEvents(); });
}

void StrChange(const Text& source, const Text& search, const Text& replacement, Int16 length,
               Text& result)
{
    ResumeNext on{u"StrChange"};
    // The caller may pass the same object as source and result.
    const Text text = source;
    result = text;
    if (trim(text).empty() || trim(search).empty() || trim(replacement).empty() || length < 1)
        return;
    if (!lengthsFit(text, search, length)) return;
    const int lastPosition = ansiLength(trim(text)) - (length - 1);
    on([&] { result = replacedInPlace(text, lastPosition, search, replacement, length); });
    on([] { DoEvents(); });
}

void SendKeyEscape(const Text& source, Text& result)
{
    constexpr TextView kSpecial = u"+^%~()[{}"; // kept quirk: "]" isn't escaped
    Text escaped;
    for (const char16_t c : source)
        if (kSpecial.find(c) != TextView::npos)
            escaped += {u'{', c, u'}'};
        else
            escaped += c;
    result = escaped;
}

}
