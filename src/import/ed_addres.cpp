#include "app/guard.h"
#include "app/settings.h"
#include "app/text_routines.h"
#include "friend/friend_names.h"
#include "import/mail_fields.h"
#include "platform/runtime/text.h"

#include <algorithm>

namespace tolvek {
namespace {

constexpr int kNameLimit = 60;

Text valueOf(const Text& line, TextView label)
{
    if (trim(line) == label) return {};
    // One separator character follows the label.
    return mid(line, static_cast<int>(label.size()) + 2);
}

// The position of "(" or "<", where the second part begins. The search is by code unit,
// so a full-width bracket stays part of a name until edString blanks it.
int delimiterPosition(const Text& text, int limit)
{
    const auto found = text.find_first_of(u"(<");
    return found == Text::npos ? limit + 1 : static_cast<int>(found) + 1;
}

bool looksLikeAddress(const Text& part)
{
    return inStr(part, u".", Compare::TextMode) > 0 && inStr(part, u"@", Compare::TextMode) > 0;
}

// Splits "name <address>" or "address (name)". The first part alone decides which it
// is.
void splitValue(const Text& value, Text& name, Text& address)
{
    Text decoded, text, first, second;
    Mail_StrChange_Sub(value, decoded);
    // ’ becomes a backslash, which edString then blanks.
    StrChange(decoded, u"’", u"\\", 1, text);
    // Kept: the limit is a length in bytes. A bracket that is the last character of an
    // ASCII text therefore begins no second part, but after a double-byte character it
    // does.
    const int limit = ansiLength(text);
    const int position = delimiterPosition(text, limit);
    edString(trim(left(text, position - 1)), first);
    edString(position < limit ? trim(mid(text, position)) : Text(), second);
    if (looksLikeAddress(first)) std::swap(first, second);
    name = std::move(first);
    address = std::move(second);
    if (address == gMyMailAddr) name = gMyMailHandle;
}

void fillMissing(Int16 side, Int16 isFrom, Text& name, Text& address)
{
    const bool toTheUser = side == 0 && isFrom == 0;
    if (toTheUser && (isBlank(address) || isBlank(name))) {
        // A received mail is assumed to be addressed to the user: if one half is
        // missing, both are replaced.
        address = gMyMailAddr;
        name = gMyMailHandle;
    } else if (!toTheUser && isBlank(address)) {
        address = kNoValue;
    }
    if (isBlank(name)) setName(address, name);
    if (isBlank(name)) name = kNoValue;
}

}

void edAddres(Int16 side, Int16 isFrom, const Text& line, Text& name, Text& address)
{
    leavePlainOnError(u"edAddres", [&] {
        name.clear();
        address.clear();
        const Text value = valueOf(line, isFrom != 0 ? TextView(u"From") : TextView(u"To"));
        if (!isBlank(value)) splitValue(value, name, address);
        fillMissing(side, isFrom, name, address);
        // Kept order: the cut comes last, and its result isn't trimmed again.
        name = left(trim(name), kNameLimit);
        address = left(trim(address), kNameLimit);
    });
}

}
