// Other programs' windows: brought to the front, and typed into.
//
// No screen, no permission or no such window is std::system_error, never a
// crash; nothing is typed then.
#pragma once
#include "platform/system/keys.h"

#include <cstdint>
#include <span>

namespace tolvek {

// Brings the top window of that process to the front and gives it the keyboard.
// Returns once it verifiably has it; within the system's patience, or fails.
void activateProcess(std::int32_t processId);

// True while a window of that process has the keyboard.
bool hasKeyboard(std::int32_t processId);

// Plays the strokes into the window with the keyboard, and returns once they
// are on their way to it, with the pauses that menus need. Characters beyond
// ASCII aren't played: invalid_argument, before the first stroke.
void playKeys(std::span<const KeyEvent> keys);

}
