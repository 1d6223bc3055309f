#include "converter/friend_record.h"

#include "converter/ascii.h"
#include "converter/plain_text.h"
#include "platform/runtime/codepage932.h"

#include <algorithm>
#include <limits>

namespace tolvek {

namespace {

constexpr TextView kNoKind = u"0";
constexpr TextView kMailto = u"mailto:";

bool isControl(char16_t unit)
{
    return unit < 0x20 || unit == 0x7F;
}

Text withoutControls(TextView text)
{
    Text kept;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool control = isControl(text[at]);
        // a run of controls becomes one blank
        if (control && at > 0 && isControl(text[at - 1])) continue;
        kept += control ? u' ' : text[at];
    }
    return kept;
}

// Quotes would end the reader's field or its SQL statement; brackets and the like are
// never part of a bare address; the last three characters mark lost bytes.
bool isForbidden(char16_t unit)
{
    constexpr TextView kForbidden = u" \u3000\t'\"’|<>(),;:\\\uFFFD・〓";
    return isControl(unit) || kForbidden.find(unit) != TextView::npos;
}

Text withoutMailto(TextView address)
{
    const bool link = lowerCase(address.substr(0, kMailto.size())) == kMailto;
    return Text(address.substr(link ? kMailto.size() : 0));
}

TextView kindCode(TextView written)
{
    constexpr TextView kCodes = u"12346789"; // there is no 5
    const bool known = written.size() == 1 && kCodes.find(written[0]) != TextView::npos;
    return known ? written : kNoKind;
}

std::string quoted(TextView text)
{
    return '"' + toAnsi(text) + '"';
}

}

Text friendText(TextView written)
{
    Text text = plainLine(withoutControls(written));
    std::replace(text.begin(), text.end(), u'"', u'’');
    // Cut after the conversion, since the column counts what is stored; the cut may
    // leave a blank at the end.
    return rtrim(left(trim(keptToAnsi(text)), kFriendColumn));
}

Text friendAddress(TextView written)
{
    // Looked for in the original: folding would turn the single quote into ’.
    const bool quote = written.find(u'\'') != TextView::npos;
    const Text address = withoutMailto(trim(foldedLine(withoutControls(written))));
    const std::size_t at = address.find(u'@');
    const bool whole = at != Text::npos && at > 0 && at + 1 < address.size();
    const bool bears = address.size() <= kFriendColumn && fitsAnsi(address) &&
                       std::none_of(address.begin(), address.end(), isForbidden);
    return !quote && whole && bears ? address : Text();
}

std::optional<FriendRecord> friendRecord(const FriendEntry& entry)
{
    const Text address = friendAddress(entry.address);
    if (address.empty()) return std::nullopt;
    const bool fits = entry.mails >= 0 && entry.mails <= std::numeric_limits<std::int16_t>::max();
    std::string line = quoted(kindCode(entry.kind));
    for (const Text& text : {friendText(entry.pet), friendText(entry.name), address})
        line += ',' + quoted(text);
    line += ',' + std::to_string(fits ? entry.mails : 0) + "\r\n";
    return FriendRecord{address, line};
}

}
