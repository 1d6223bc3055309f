// The mails of one database, for comparison with those of another.
//
// Two rows are the same mail when date, time, sub key, direction, addresses, subject
// and text agree. The names don't count: the program rewrites them whenever a friend's
// name changes. The set holds a hash of each mail, so it needs only a few bytes a mail.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <optional>
#include <unordered_set>

namespace tolvek {

class MailSet {
public:
    explicit MailSet(const Text& database);

    // False if the file can't be read as a database with mails.
    bool isReadable() const { return mails_.has_value(); }
    // False if either can't be read.
    bool holdsAllOf(const Text& database) const;

private:
    std::optional<std::unordered_set<std::size_t>> mails_;
};

// The same for all that a user can't get back by reading PostPet's boxes again or
// rebuilding. A friend or a rule is the same only if all its fields agree.
bool holdsMailsFriendsAndRulesOf(const Text& copy, const Text& database);

}
