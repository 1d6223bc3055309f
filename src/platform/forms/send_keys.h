// Another program driven by its keyboard, and the clipboard.
//
// All three wait until their work is done, without letting the user's events
// in. Failures are RuntimeError 5: no such window, no screen, a text that the
// notation doesn't take, and a window that lost the keyboard meanwhile - the
// keys never go to another one because of us.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>
#include <functional>

namespace tolvek {

// Brings the process's window to the front; SendKeys goes to it from then on.
void AppActivate(std::int32_t processId);

// The platform's key notation (platform/runtime/key_notation.h). Text beyond
// ASCII goes through the clipboard and the paste key; what stood on the
// clipboard is back on it before this returns.
void SendKeys(TextView keys);

class Clipboard {
public:
    static void Clear();
    static void SetText(TextView text); // with its line ends as they are
    static Text GetText();
};

// For tests: takes the place of the screen.
struct KeySender {
    std::function<void(std::int32_t)> AppActivate;
    std::function<void(TextView)> SendKeys;
};
void setKeySender(KeySender sender); // a default-constructed one gives the screen back

}
