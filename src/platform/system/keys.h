// Keys to be sent to another program's window, in the same form on every system.
#pragma once
#include <vector>

namespace tolvek {

enum class Key {
    Character, // the key that produces KeyEvent::character
    Enter,
    Tab,
    Escape,
    Backspace,
    Break,
    CapsLock,
    Clear,
    Delete,
    Down,
    Up,
    Left,
    Right,
    End,
    Home,
    Help,
    Insert,
    NumLock,
    PageDown,
    PageUp,
    PrintScreen,
    ScrollLock,
    F1, // F1 to F16 are consecutive
    F16 = F1 + 15,
    Shift,
    Control,
    Alt
};

// Shift, Control and Alt are pressed and later released; any other key is one
// stroke. Every modifier that is pressed is also released, in reverse order.
enum class KeyAction { Press, Release, Stroke };

struct KeyEvent {
    KeyAction action = KeyAction::Stroke;
    Key key = Key::Character;
    char32_t character = 0; // for Key::Character; a capital means the capital letter
    bool operator==(const KeyEvent&) const = default;
};

}
