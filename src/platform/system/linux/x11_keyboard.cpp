#include "platform/system/linux/x11_keyboard.h"

#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace tolvek {

namespace {

// The time that the user has to release the keys that started a command.
constexpr std::chrono::milliseconds kPatience{500};
// CapsLock and NumLock aren't among them: they are locked, not held.
constexpr unsigned kHoldable = ShiftMask | ControlMask | Mod1Mask | Mod4Mask | Mod5Mask;

struct NamedKey {
    Key key;
    KeySym symbol;
};
constexpr NamedKey kNamedKeys[] = {
    {Key::Enter, XK_Return},
    {Key::Tab, XK_Tab},
    {Key::Escape, XK_Escape},
    {Key::Backspace, XK_BackSpace},
    {Key::Break, XK_Pause},
    {Key::CapsLock, XK_Caps_Lock},
    {Key::Clear, XK_Clear},
    {Key::Delete, XK_Delete},
    {Key::Down, XK_Down},
    {Key::Up, XK_Up},
    {Key::Left, XK_Left},
    {Key::Right, XK_Right},
    {Key::End, XK_End},
    {Key::Home, XK_Home},
    {Key::Help, XK_Help},
    {Key::Insert, XK_Insert},
    {Key::NumLock, XK_Num_Lock},
    {Key::PageDown, XK_Page_Down},
    {Key::PageUp, XK_Page_Up},
    {Key::PrintScreen, XK_Print},
    {Key::ScrollLock, XK_Scroll_Lock},
    {Key::Shift, XK_Shift_L},
    {Key::Control, XK_Control_L},
    {Key::Alt, XK_Alt_L},
};

// For ASCII characters the key symbol is the character code.
KeySym symbolOf(const KeyEvent& event)
{
    if (event.key == Key::Character)
        return event.character >= 0x20 && event.character < 0x7F ? event.character : NoSymbol;
    if (event.key >= Key::F1 && event.key <= Key::F16)
        return XK_F1 + static_cast<KeySym>(event.key) - static_cast<KeySym>(Key::F1);
    const auto* named = std::ranges::find(kNamedKeys, event.key, &NamedKey::key);
    return named == std::end(kNamedKeys) ? NoSymbol : named->symbol;
}

char32_t keyOfLetter(char32_t letter)
{
    return letter >= U'A' && letter <= U'Z' ? letter - U'A' + U'a' : letter;
}

void release(XkbDescPtr description)
{
    XkbFreeKeyboard(description, XkbAllComponentsMask, True);
}
using Description = std::unique_ptr<XkbDescRec, decltype(&release)>;

Description describe(const X11Screen& screen)
{
    Description keyboard(XkbGetMap(screen.display(), XkbAllMapComponentsMask, XkbUseCoreKbd),
                         release);
    screen.check();
    if (!keyboard) throwDesktopError(std::errc::function_not_supported, "no keyboard layout");
    return keyboard;
}

XkbStateRec stateOf(const X11Screen& screen)
{
    XkbStateRec state{};
    XkbGetState(screen.display(), XkbUseCoreKbd, &state);
    screen.check();
    return state;
}

KeySym symbolAt(const Description& keyboard, KeyCode code, unsigned modifiers)
{
    unsigned used = 0;
    KeySym symbol = NoSymbol;
    const bool found = XkbTranslateKeyCode(keyboard.get(), code, modifiers, &used, &symbol);
    return found ? symbol : NoSymbol;
}

// A combination of held keys and its effect on the other keys.
struct Hold {
    std::vector<KeyCode> keys;
    unsigned modifiers = 0;
};

// Nothing held, Shift, the third-level key of layouts that have one, and both.
std::vector<Hold> holdsOf(const Description& keyboard, unsigned group)
{
    std::vector<Hold> holds{{}};
    for (const KeySym symbol : {XK_Shift_L, XK_ISO_Level3_Shift}) {
        for (unsigned code = keyboard->min_key_code; code <= keyboard->max_key_code; ++code) {
            const auto key = static_cast<KeyCode>(code);
            const unsigned modifier = keyboard->map->modmap[code];
            if (modifier == 0 || symbolAt(keyboard, key, group) != symbol) continue;
            // Each combination found so far, with this key added.
            for (std::size_t at = 0, end = holds.size(); at < end; ++at) {
                Hold more = holds[at];
                more.keys.push_back(key);
                more.modifiers |= modifier;
                holds.push_back(std::move(more));
            }
            break;
        }
    }
    return holds;
}

std::vector<KeyCode> heldModifierKeys(const X11Screen& screen)
{
    char down[32] = {};
    XQueryKeymap(screen.display(), down);
    const Description keyboard = describe(screen);
    std::vector<KeyCode> held;
    for (unsigned code = keyboard->min_key_code; code <= keyboard->max_key_code; ++code)
        if ((down[code / 8] >> (code % 8) & 1) && (keyboard->map->modmap[code] & kHoldable))
            held.push_back(static_cast<KeyCode>(code));
    return held;
}

}

X11Keyboard::X11Keyboard(const X11Screen& screen)
{
    const Description keyboard = describe(screen);
    const XkbStateRec state = stateOf(screen);
    // Mod2 is NumLock, which chooses between the symbols of the keypad.
    const unsigned group = XkbBuildCoreState(state.locked_mods & Mod2Mask, state.group);
    // try_emplace keeps the first entry, and the holds are ordered by the number of
    // keys.
    for (const Hold& hold : holdsOf(keyboard, group))
        for (unsigned code = keyboard->min_key_code; code <= keyboard->max_key_code; ++code) {
            const auto key = static_cast<KeyCode>(code);
            if (const KeySym symbol = symbolAt(keyboard, key, group | hold.modifiers))
                places_.try_emplace(symbol, KeyPlace{key, hold.keys});
        }
}

KeyPlace X11Keyboard::placeOfSymbol(KeySym symbol) const
{
    const auto found = places_.find(symbol);
    if (symbol == NoSymbol || found == places_.end())
        throw std::invalid_argument("no such key on this keyboard");
    return found->second;
}

KeyPlace X11Keyboard::placeOf(const KeyEvent& key) const
{
    return placeOfSymbol(symbolOf(key));
}

KeyPlace X11Keyboard::placeOfCommand(const KeyEvent& key) const
{
    return placeOf({key.action, key.key, keyOfLetter(key.character)});
}

FreeModifiers::FreeModifiers(const X11Screen& screen) : screen_(screen)
{
    screen.waitFor(kPatience, [&] { return heldModifierKeys(screen).empty(); });
    // The keys that are still down after the wait.
    for (const KeyCode key : heldModifierKeys(screen))
        XTestFakeKeyEvent(screen.display(), key, False, CurrentTime);
    const XkbStateRec state = stateOf(screen);
    // A modifier that is active without a pressed key is locked.
    if (state.mods & kHoldable)
        throwDesktopError(std::errc::device_or_resource_busy, "a modifier key is locked");
    capsLock_ = (state.locked_mods & LockMask) != 0;
    if (capsLock_) XkbLockModifiers(screen.display(), XkbUseCoreKbd, LockMask, 0);
}

FreeModifiers::~FreeModifiers()
{
    if (capsLock_) XkbLockModifiers(screen_.display(), XkbUseCoreKbd, LockMask, LockMask);
    XSync(screen_.display(), False);
}

}
