// The one correspondent that a From or To field gives.
#pragma once
#include "platform/runtime/text.h"

#include <string_view>
#include <vector>

namespace tolvek {

struct Mailbox {
    Text name;
    Text address;
};

// All mailboxes of a field: quotes, nested comments, angle brackets, groups and routes
// resolved, encoded words decoded. Split at commas outside of all these.
std::vector<Mailbox> parseMailboxes(std::string_view rawValue);

// The first one with an "@"; else the first that holds anything.
Mailbox firstMailbox(std::string_view rawValue);

// The form that the reader of the temp file parses without loss: "address (name)" if
// the address contains both "." and "@", else "name <address>". Brackets inside either
// would be parsed as these delimiters, so they become full-width ones; in a name that
// looks like an address too, full stops become ・.
Text mailboxValue(const Mailbox& mailbox);

}
