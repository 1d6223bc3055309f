// For tests alone: the desktop's program for the help file. The hook stays until it is
// set again; an empty argument restores the real thing.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek::hooks {

// Shows the file; returns false when it couldn't.
void setHelpViewer(std::function<bool(const Text& file)> viewer);

}
