// The system's help viewer.
//
// A system that has none opens the help file with whatever its desktop has for
// such files.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>
#include <functional>

class QWidget;

namespace tolvek {

inline constexpr std::uint32_t HELP_INDEX = 3;

// Non-zero when the help came up. A help file that isn't there, or that nothing
// can show, is told in a box.
std::int32_t WinHelpA(QWidget* window, const Text& file, std::uint32_t command,
                      std::uintptr_t data);

// What shows a file; false when nothing could. An empty function gives the
// system's own back.
void setHelpViewer(std::function<bool(const Text& file)> viewer);

}
