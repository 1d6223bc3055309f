// Keystrokes written as text, as the classic platform's SendKeys takes them.
//
//   + ^ %        Shift, Control and Alt for the next key or group; at the end of the
//                text or of a group they are pressed alone
//   ( )          a group: its keys are sent while the preceding modifiers are held
//   ~            Enter
//   {NAME}       a key by its name, in either case: ENTER, TAB, ESC, BACKSPACE,
//                BS, BKSP, BREAK, CAPSLOCK, CLEAR, DELETE, DEL, DOWN, UP, LEFT,
//                RIGHT, END, HOME, HELP, INSERT, INS, NUMLOCK, PGDN, PGUP,
//                PRTSC, SCROLLLOCK, F1 to F16
//   {c}          the character itself: {+}, {{}, {}}, { }
//   {NAME n}     n times, 1 to 32767; also {c n}
//
// Any other character stands for itself, "[" and "]" included.
#pragma once
#include "platform/runtime/text.h"
#include "platform/system/keys.h"

#include <vector>

namespace tolvek {

// Parses the whole text before any key is sent. An unmatched brace or parenthesis,
// an unknown name, empty braces or a bad count is error 5, and no key is returned.
std::vector<KeyEvent> keyEvents(TextView notation);

}
