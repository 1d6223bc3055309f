// The mails of one database, to be compared with another's.
//
// Two rows are one mail when date, time, sub key, direction, addresses, subject and
// text agree; the names over it are set anew all the time. A mail is known by a
// hash of these, so that the set costs a few bytes a mail.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <optional>
#include <unordered_set>

namespace tolvek {

class MailSet {
public:
    explicit MailSet(const Text& database);

    // False for a file that can't be read as a database with mails.
    bool isReadable() const { return mails_.has_value(); }
    // False when either can't be read.
    bool holdsAllOf(const Text& database) const;

private:
    std::optional<std::unordered_set<std::size_t>> mails_;
};

}
