// Looks a friend up by address.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Looks the address up unchanged in the open gDb. True when it is in the book; gRs is
// then on its row. Failures propagate.
bool findFriend(const Text& address);

}
