// Activates and types into windows of other programs.
//
// A missing screen, permission or window is reported as std::system_error and never
// crashes; nothing is typed then.
#pragma once
#include "platform/system/keys.h"

#include <cstdint>
#include <functional>
#include <span>

namespace tolvek {

// Brings the top window of that process to the front and gives it the keyboard
// focus. If the process has no window, a window of a process that it started is
// used. Returns when the window verifiably has the focus; throws if it doesn't get
// it within two seconds. The first window of a process that this program has just
// started is waited for; `meanwhile` is called repeatedly then.
void activateProcess(std::int32_t processId, const std::function<void()>& meanwhile = {});

// Asks the window manager to bring a window of this program to the front and to give it
// the keyboard focus, whatever program has it. Doesn't wait; without a manager, nothing
// happens.
void bringToFront(std::uintptr_t window);

// Sends the keys to the window of that process that has the keyboard focus, with
// the pauses that menus need. Returns when the window has processed them, as far as
// it reports that. Each key is sent only while the process has the focus; if
// another process takes it, the remaining keys aren't sent and std::system_error is
// thrown. A character or key that the keyboard doesn't have throws
// std::invalid_argument before the first key is sent.
//
// `meanwhile` is called repeatedly while waiting for the window. The window may
// itself wait for an answer from this program, for example for the contents of the
// clipboard.
void playKeys(std::int32_t processId, std::span<const KeyEvent> keys,
              const std::function<void()>& meanwhile);

}
