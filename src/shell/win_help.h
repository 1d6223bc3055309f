// The system's help viewer.
//
// Where there is none, the desktop's program for such files opens the help file.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>

class QWidget;

namespace tolvek {

inline constexpr std::uint32_t HELP_INDEX = 3;

// Non-zero when the help was shown. If the file is missing or can't be shown, a box
// says so.
std::int32_t WinHelpA(QWidget* window, const Text& file, std::uint32_t command,
                      std::uintptr_t data);

}
