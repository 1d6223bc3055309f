// Drives another program by its keyboard, and accesses the clipboard.
//
// All functions return when their work is done and don't let the user's events in
// meanwhile. Failures are RuntimeError 5: no such window, no screen, text that the
// notation doesn't accept, or a window that lost the keyboard focus meanwhile. Keys
// are never sent to another window because of us.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// Brings the process's window to the front; SendKeys then types into it.
void AppActivate(std::int32_t processId);

// Takes the classic platform's key notation (platform/runtime/key_notation.h). Text
// beyond ASCII goes through the clipboard and the paste key; the previous clipboard
// contents are restored before this returns.
void SendKeys(TextView keys);

class Clipboard {
public:
    static void Clear();
    static void SetText(TextView text); // line ends unchanged
    static Text GetText();
};

}
