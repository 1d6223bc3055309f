#include "app/guard.h"
#include "app/settings.h"
#include "app/text_routines.h"
#include "friend/set_name.h"
#include "import/blank_text.h"
#include "import/mail_fields.h"

#include <algorithm>

namespace tolvek {
namespace {

constexpr int kNameLimit = 60;

Text valueOf(const Text& line, TextView label)
{
    if (trim(line) == label) return {};
    return mid(line, static_cast<int>(label.size()) + 2);
}

// Where the second part begins: "(" or "<", looked for by code unit, so that a
// full-width bracket stays part of a name until edString blanks it.
int delimiterPosition(const Text& text, int limit)
{
    const auto found = text.find_first_of(u"(<");
    return found == Text::npos ? limit + 1 : static_cast<int>(found) + 1;
}

bool looksLikeAddress(const Text& part)
{
    return inStr(part, u".", Compare::TextMode) > 0 && inStr(part, u"@", Compare::TextMode) > 0;
}

// "name <address>" or "address (name)", told apart by the first part alone.
void splitValue(const Text& value, Text& name, Text& address)
{
    Text decoded, text, first, second;
    Mail_StrChange_Sub(value, decoded);
    StrChange(decoded, u"’", u"\\", 1, text);
    // The limit is a length in bytes: a bracket that is the last character of an
    // ASCII text begins no second part, behind a double-byte one it does.
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
        // A received mail is taken to be addressed to the user: one missing half
        // replaces both.
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
        // The cut comes last and what it leaves isn't trimmed again.
        name = left(trim(name), kNameLimit);
        address = left(trim(address), kNameLimit);
    });
}

}
