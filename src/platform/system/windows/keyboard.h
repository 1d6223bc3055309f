// Keys of the keyboard layout, and their sending.
#pragma once
#include "platform/system/keys.h"
#include "platform/system/windows/windows_api.h"

#include <functional>
#include <span>
#include <vector>

namespace tolvek {

// A key, and the keys to be held for it.
struct KeyPlace {
    WORD key = 0;
    std::vector<WORD> held;
};

// An event and the keys that produce it.
struct KeyStep {
    KeyEvent event;
    KeyPlace place;
    bool isCommand = false; // Control or Alt is held
};

class Keyboard {
public:
    // The layout in which that window takes its keys.
    explicit Keyboard(HWND window);
    // Assumes that CapsLock is off. In a keyboard command a letter means its key, so Shift
    // isn't held for a capital. Throws std::invalid_argument for a key that the layout
    // lacks.
    std::vector<KeyStep> stepsFor(std::span<const KeyEvent> keys) const;

private:
    KeyPlace placeOf(const KeyEvent& event, bool isCommand) const;
    KeyPlace placeOfCharacter(char32_t character) const;

    HKL layout_;
};

// During its lifetime keys arrive at the window as they are sent: CapsLock and the window's
// input method are off, and no modifier key of the user's is down. The state before comes
// back at the end.
class PlainTyping {
public:
    explicit PlainTyping(HWND window);
    ~PlainTyping();
    PlainTyping(const PlainTyping&) = delete;
    PlainTyping& operator=(const PlainTyping&) = delete;

private:
    HWND inputMethod_;
    bool wasOpen_ = false;
    bool capsLock_ = false;
};

class KeyPlayer {
public:
    // Before each key `verified` must confirm that the right window gets it.
    explicit KeyPlayer(std::function<bool()> verified);
    ~KeyPlayer(); // also releases the keys when an exception interrupted the sending
    KeyPlayer(const KeyPlayer&) = delete;
    KeyPlayer& operator=(const KeyPlayer&) = delete;

    // Throws std::system_error when another window has the keyboard, or when the system
    // refuses the keys.
    void play(const KeyStep& step);

private:
    void press(WORD key);
    void release(WORD key);
    void stroke(const KeyPlace& place);

    std::function<bool()> verified_;
    std::vector<WORD> held_;
};

}
