// Keystrokes written as a text, as the platform's SendKeys takes them.
//
//   + ^ %        Shift, Control and Alt with the next key or group; at the end
//                of the text or of a group they are pressed alone
//   ( )          a group: its keys come while the modifiers before it are held
//   ~            Enter
//   {NAME}       a key by its name, in either case: ENTER, TAB, ESC, BACKSPACE,
//                BS, BKSP, BREAK, CAPSLOCK, CLEAR, DELETE, DEL, DOWN, UP, LEFT,
//                RIGHT, END, HOME, HELP, INSERT, INS, NUMLOCK, PGDN, PGUP,
//                PRTSC, SCROLLLOCK, F1 to F16
//   {c}          a character as itself: {+}, {{}, {}}, { }
//   {NAME n}     n times, 1 to 32767; {c n} too
//
// Any other character is itself, "[" and "]" among them.
#pragma once
#include "platform/runtime/text.h"
#include "platform/system/keys.h"

#include <vector>

namespace tolvek {

// The whole text is read before anything of it can be played: a brace or a
// parenthesis without its partner, an unknown name, empty braces or a bad count
// is error 5, and then no key at all comes out.
std::vector<KeyEvent> keyEvents(TextView notation);

}
