// The user that this process runs for.
#pragma once
#include <string>

namespace tolvek {

// His identifier, "S-1-5-21-..." for example; empty if the system doesn't say.
std::wstring userIdentifier();

}
