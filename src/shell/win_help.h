// The system's help viewer.
//
// Where there is none, the desktop's program for such files opens the help file.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>
#include <functional>

class QWidget;

namespace tolvek {

inline constexpr std::uint32_t HELP_INDEX = 3;

// Non-zero when the help was shown. If the file is missing or can't be shown, a box
// says so.
std::int32_t WinHelpA(QWidget* window, const Text& file, std::uint32_t command,
                      std::uintptr_t data);

// Sets the function that shows a file; it returns false when it couldn't. An empty
// function restores the default. For tests.
void setHelpViewer(std::function<bool(const Text& file)> viewer);

}
