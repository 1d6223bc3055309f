// Which letters of a Library match a query, and what is counted beside them.
#pragma once
#include "letters/library.h"
#include "letters/query.h"

#include <atomic>
#include <functional>

namespace tolvek {

// What the user has chosen beside the field.
struct Narrowing {
    std::optional<Months> months;
    std::optional<PersonId> person;
    std::optional<std::uint32_t> conversation;
    std::optional<bool> sent; // only sent letters, or only received ones
};

struct MonthCount {
    int month = 0; // yyyymm
    std::size_t received = 0, sent = 0;
};

struct PersonCount {
    PersonId person = 0;
    std::size_t letters = 0;
};

struct Results {
    std::vector<LetterId> letters;   // that match and are inside the narrowing; newest first
    std::vector<MonthCount> months;  // of those without the narrowing by months; ascending
    std::vector<PersonCount> people; // of those without the narrowing by person; most first
    std::size_t matches = 0;         // of the query alone
};

// Ends early, with what it has so far, when `cancelled` becomes true.
using Cancelled = std::function<bool()>;
std::vector<LetterId> matching(const Library& library, const LetterQuery& query,
                               const Cancelled& cancelled = {});
// Searches only `among`. For a query that only adds to the one before.
std::vector<LetterId> matching(const Library& library, const LetterQuery& query,
                               const std::vector<LetterId>& among, const Cancelled& cancelled = {});
// Whether every letter that matches `next` also matches `before`.
bool isNarrower(const LetterQuery& next, const LetterQuery& before);

Results narrowed(const Library& library, const std::vector<LetterId>& matches,
                 const Narrowing& narrowing);

}
