// Strokes on a keyboard, the same on every system: what is to be played into
// another program's window.
#pragma once
#include <vector>

namespace tolvek {

enum class Key {
    Character, // whatever brings KeyEvent::character
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
    F1, // F1 to F16 follow each other
    F16 = F1 + 15,
    Shift,
    Control,
    Alt
};

// Shift, Control and Alt come as a press and a later release, any other key as
// one stroke. Every modifier that is pressed is also released, in reverse order.
enum class KeyAction { Press, Release, Stroke };

struct KeyEvent {
    KeyAction action = KeyAction::Stroke;
    Key key = Key::Character;
    char32_t character = 0; // of Key::Character; a capital stands for itself
    bool operator==(const KeyEvent&) const = default;
};

}
