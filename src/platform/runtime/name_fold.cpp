#include "platform/runtime/name_fold.h"

#include "platform/runtime/codepage932.h"

#include <algorithm>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace tolvek {

namespace {

bool isAscii(TextView text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

Text foldedAscii(TextView name)
{
    Text folded(name);
    for (char16_t& unit : folded)
        if (unit >= u'A' && unit <= u'Z') unit += u'a' - u'A';
    return folded;
}

}

Text foldedName(TextView name)
{
    // Most names are ASCII and don't need ICU.
    if (isAscii(name)) return foldedAscii(name);
    const icu::UnicodeString source(false, name.data(), static_cast<int>(name.size()));
    icu::UnicodeString lower;
    for (int at = 0; at < source.length(); at = source.moveIndex32(at, 1))
        // Simple folding, one character for one: full folding turns "ß" into "ss".
        lower.append(u_foldCase(source.char32At(at), U_FOLD_CASE_DEFAULT));
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString composed =
        icu::Normalizer2::getNFCInstance(status)->normalize(lower, status);
    const icu::UnicodeString& result = U_SUCCESS(status) ? composed : lower;
    Text folded(result.getBuffer(), static_cast<std::size_t>(result.length()));
    std::transform(folded.begin(), folded.end(), folded.begin(), ownForm);
    return folded;
}

}
