// For tests alone: the end of the program and its converter. A hook stays until it is set
// again; an empty argument restores the real thing.
#pragma once
#include "app/converter_library.h"

namespace tolvek::hooks {

// Called instead of leaving the process. Must throw or not return.
void setEnd(std::function<void(int)> end);

// A default-constructed library restores the real one and loads it again.
void setConverterLibrary(ConverterLibrary replacement);

}
