#include "letters/library.h"

#include "letters/letter_file.h"
#include "letters/library_builder.h"

#include <algorithm>

namespace tolvek {

Library::Library(std::vector<Source> sources) : sources_(std::move(sources))
{
    LibraryBuilder(*this).build();
}

Library::~Library() = default;

Letter Library::letter(LetterId id) const
{
    const Place& at = places_[id];
    const LetterFile& file = *sources_[at.file].letters;
    const LetterRow& row = file.rows()[at.row];
    Letter letter;
    letter.date = file.field(row, kDate);
    letter.time = file.field(row, kTime);
    letter.subKey = row.subKey;
    letter.sent = row.sent != 0;
    letter.senderName = file.field(row, kSenderName);
    letter.senderAddress = file.field(row, kSenderAddress);
    letter.receiverName = file.field(row, kReceiverName);
    letter.receiverAddress = file.field(row, kReceiverAddress);
    letter.subject = file.field(row, kSubject);
    letter.text = file.field(row, kText);
    letter.parts = row.parts;
    letter.person = at.person;
    letter.identity = at.identity;
    return letter;
}

std::vector<int> Library::filesOf(LetterId id) const
{
    const auto further = furtherFiles_.find(id);
    if (further != furtherFiles_.end()) return further->second;
    return {static_cast<int>(places_[id].file)};
}

std::optional<LetterId> Library::find(std::uint64_t identity) const
{
    const auto found =
        std::lower_bound(identities_.begin(), identities_.end(), std::pair(identity, LetterId{0}));
    if (found == identities_.end() || found->first != identity) return std::nullopt;
    return found->second;
}

int Letter::year() const
{
    if (date.size() < 4) return 0;
    int number = 0;
    for (const char16_t c : date.substr(0, date.size() - 4)) {
        if (c < u'0' || c > u'9' || number > 9999) return 0;
        number = number * 10 + (c - u'0');
    }
    return number;
}

int Letter::month() const
{
    if (date.size() < 4) return 0;
    const TextView digits = date.substr(date.size() - 4, 2);
    const int number = (digits[0] - u'0') * 10 + (digits[1] - u'0');
    return number >= 1 && number <= 12 ? number : 0;
}

}
