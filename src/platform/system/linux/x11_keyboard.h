// Finds the keys in the current keyboard layout.
#pragma once
#include "platform/system/keys.h"
#include "platform/system/linux/x11_screen.h"

#include <X11/X.h>

#include <map>
#include <optional>

namespace tolvek {

// A key, and the keys to be held for it.
struct KeyPlace {
    KeyCode code = 0;
    std::vector<KeyCode> held;
};

class X11Keyboard {
public:
    explicit X11Keyboard(const X11Screen& screen);

    // Assumes that CapsLock is off. Throws std::invalid_argument for a key that the
    // layout lacks.
    KeyPlace placeOf(const KeyEvent& key) const;
    // The same for a keyboard command: a letter means its key, so Shift isn't held
    // for a capital.
    KeyPlace placeOfCommand(const KeyEvent& key) const;

private:
    void read(const X11Screen& screen);
    KeyPlace placeOfSymbol(KeySym symbol) const;

    std::map<KeySym, KeyPlace> places_; // for each symbol the entry with the fewest held keys
};

// During its lifetime only the modifiers that we send are active: turns CapsLock
// off, waits for the user to release modifier keys, then forces them up. Throws
// std::system_error if another modifier is locked.
class FreeModifiers {
public:
    explicit FreeModifiers(const X11Screen& screen);
    ~FreeModifiers(); // restores CapsLock
    FreeModifiers(const FreeModifiers&) = delete;
    FreeModifiers& operator=(const FreeModifiers&) = delete;

private:
    const X11Screen& screen_;
    bool capsLock_ = false;
};

}
