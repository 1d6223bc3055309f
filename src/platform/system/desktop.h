// Other programs' windows: brought to the front, and typed into.
//
// No screen, no permission or no such window is std::system_error, never a
// crash; nothing is typed then.
#pragma once
#include "platform/system/keys.h"

#include <cstdint>
#include <functional>
#include <span>

namespace tolvek {

// Brings the top window of that process to the front and gives it the keyboard;
// of a process that has none, one of a process that it started. Returns once it
// verifiably has it; within the system's patience, or fails.
void activateProcess(std::int32_t processId);

// Plays the strokes into the window of that process that has the keyboard, with
// the pauses that menus need, and returns once the window has worked them off,
// as far as it tells. Each stroke is played only while the process has the
// keyboard; when another one takes it, the rest stays unplayed: system_error.
// A character or key that the keyboard doesn't have: invalid_argument, before
// the first stroke.
//
// `meanwhile` is called again and again while the window is awaited, which may
// itself wait for an answer of this program: for what this has on the clipboard.
void playKeys(std::int32_t processId, std::span<const KeyEvent> keys,
              const std::function<void()>& meanwhile);

}
