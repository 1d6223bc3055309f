// Where the keys are on the keyboard as it is laid out at this moment.
#pragma once
#include "platform/system/keys.h"
#include "platform/system/linux/x11_screen.h"

#include <X11/X.h>

#include <map>
#include <optional>

namespace tolvek {

// A key, with those that have to be held for it.
struct KeyPlace {
    KeyCode code = 0;
    std::vector<KeyCode> held;
};

class X11Keyboard {
public:
    explicit X11Keyboard(const X11Screen& screen);

    // With CapsLock off. A key that the layout lacks: std::invalid_argument.
    KeyPlace placeOf(const KeyEvent& key) const;
    // The same for a command of a program: its letter stands for the key, and
    // Shift isn't held for a capital.
    KeyPlace placeOfCommand(const KeyEvent& key) const;

private:
    void read(const X11Screen& screen);
    KeyPlace placeOfSymbol(KeySym symbol) const;

    std::map<KeySym, KeyPlace> places_; // the ones with the fewest keys to hold
};

// While it lives, no modifier is down or locked but those that are played:
// CapsLock is off, and the user's own keys are awaited, then released. What the
// user has locked in another way is std::system_error.
class FreeModifiers {
public:
    explicit FreeModifiers(const X11Screen& screen);
    ~FreeModifiers(); // CapsLock is as it was
    FreeModifiers(const FreeModifiers&) = delete;
    FreeModifiers& operator=(const FreeModifiers&) = delete;

private:
    const X11Screen& screen_;
    bool capsLock_ = false;
};

}
