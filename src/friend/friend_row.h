// The one look-up in the friend book, by address.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

// Looks the address up, as it stands, in the open gDb. True when it is in the
// book; gRs then stands on its row. Failures go to the caller.
bool findFriend(const Text& address);

}
