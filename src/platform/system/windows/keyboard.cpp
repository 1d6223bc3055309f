#include "platform/system/windows/keyboard.h"

#include "platform/system/process.h"
#include "platform/system/windows/system_failure.h"

#include <imm.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace tolvek {

namespace {

struct NamedKey {
    Key key;
    WORD code;
};
constexpr NamedKey kNamedKeys[] = {
    {Key::Enter, VK_RETURN},      {Key::Tab, VK_TAB},
    {Key::Escape, VK_ESCAPE},     {Key::Backspace, VK_BACK},
    {Key::Break, VK_CANCEL},      {Key::CapsLock, VK_CAPITAL},
    {Key::Clear, VK_CLEAR},       {Key::Delete, VK_DELETE},
    {Key::Down, VK_DOWN},         {Key::Up, VK_UP},
    {Key::Left, VK_LEFT},         {Key::Right, VK_RIGHT},
    {Key::End, VK_END},           {Key::Home, VK_HOME},
    {Key::Help, VK_HELP},         {Key::Insert, VK_INSERT},
    {Key::NumLock, VK_NUMLOCK},   {Key::PageDown, VK_NEXT},
    {Key::PageUp, VK_PRIOR},      {Key::PrintScreen, VK_SNAPSHOT},
    {Key::ScrollLock, VK_SCROLL}, {Key::Shift, VK_SHIFT},
    {Key::Control, VK_CONTROL},   {Key::Alt, VK_MENU},
};
// Keys beside the main block, which have the codes of the number block's with a mark.
constexpr WORD kMarkedKeys[] = {VK_DELETE,   VK_DOWN,    VK_UP,    VK_LEFT,  VK_RIGHT,
                                VK_END,      VK_HOME,    VK_NEXT,  VK_PRIOR, VK_INSERT,
                                VK_SNAPSHOT, VK_NUMLOCK, VK_CANCEL};
constexpr WORD kModifiers[] = {VK_SHIFT, VK_CONTROL, VK_MENU, VK_LWIN, VK_RWIN};

// The time that the user has to release the keys that started a command.
constexpr int kPatience = 500, kNap = 10; // milliseconds
constexpr UINT kAnswerTime = 500;         // of another program's input method

void send(WORD key, bool isDown)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    const bool marked = std::ranges::find(kMarkedKeys, key) != std::end(kMarkedKeys);
    input.ki.dwFlags = (marked ? KEYEVENTF_EXTENDEDKEY : 0U) | (isDown ? 0U : KEYEVENTF_KEYUP);
    if (::SendInput(1, &input, sizeof input) != 1)
        throwSystemError(std::errc::operation_not_permitted, "the system takes no keys");
}

bool isDown(WORD key)
{
    return (::GetAsyncKeyState(key) & 0x8000) != 0;
}

bool isAnyModifierDown()
{
    return std::ranges::any_of(kModifiers, isDown);
}

char32_t keyOfLetter(char32_t letter)
{
    return letter >= U'A' && letter <= U'Z' ? letter - U'A' + U'a' : letter;
}

DWORD_PTR askInputMethod(HWND inputMethod, WPARAM question, LPARAM value)
{
    DWORD_PTR answer = 0;
    ::SendMessageTimeoutW(inputMethod, WM_IME_CONTROL, question, value, SMTO_ABORTIFHUNG,
                          kAnswerTime, &answer);
    return answer;
}
constexpr WPARAM kIsOpen = 5, kSetOpen = 6; // of WM_IME_CONTROL

}

Keyboard::Keyboard(HWND window)
    : layout_(::GetKeyboardLayout(::GetWindowThreadProcessId(window, nullptr)))
{
}

KeyPlace Keyboard::placeOfCharacter(char32_t character) const
{
    const bool isAscii = character >= 0x20 && character < 0x7F;
    const SHORT found =
        isAscii ? ::VkKeyScanExW(static_cast<WCHAR>(character), layout_) : SHORT{-1};
    const int states = found >> 8 & 0xFF;
    if (found == -1 || states > 7) throw std::invalid_argument("no such key on this keyboard");
    KeyPlace place{static_cast<WORD>(found & 0xFF), {}};
    if (states & 1) place.held.push_back(VK_SHIFT);
    if (states & 2) place.held.push_back(VK_CONTROL);
    if (states & 4) place.held.push_back(VK_MENU);
    return place;
}

KeyPlace Keyboard::placeOf(const KeyEvent& event, bool isCommand) const
{
    if (event.key == Key::Character)
        return placeOfCharacter(isCommand ? keyOfLetter(event.character) : event.character);
    if (event.key >= Key::F1 && event.key <= Key::F16)
        return {static_cast<WORD>(VK_F1 + static_cast<int>(event.key) - static_cast<int>(Key::F1)),
                {}};
    const auto* named = std::ranges::find(kNamedKeys, event.key, &NamedKey::key);
    if (named == std::end(kNamedKeys)) throw std::invalid_argument("no such key on this keyboard");
    return {named->code, {}};
}

std::vector<KeyStep> Keyboard::stepsFor(std::span<const KeyEvent> keys) const
{
    std::vector<KeyStep> steps;
    int held = 0;
    for (const KeyEvent& event : keys) {
        const bool starts = event.key == Key::Control || event.key == Key::Alt;
        if (starts) held += event.action == KeyAction::Press ? 1 : -1;
        steps.push_back({event, placeOf(event, held > 0), held > 0});
    }
    return steps;
}

PlainTyping::PlainTyping(HWND window) : inputMethod_(::ImmGetDefaultIMEWnd(window))
{
    for (int waited = 0; isAnyModifierDown() && waited < kPatience; waited += kNap)
        sleepMilliseconds(kNap);
    for (const WORD key : kModifiers)
        if (isDown(key)) send(key, false);
    wasOpen_ = inputMethod_ && askInputMethod(inputMethod_, kIsOpen, 0) != 0;
    if (wasOpen_) askInputMethod(inputMethod_, kSetOpen, 0);
    capsLock_ = (::GetKeyState(VK_CAPITAL) & 1) != 0;
    if (!capsLock_) return;
    send(VK_CAPITAL, true);
    send(VK_CAPITAL, false);
}

PlainTyping::~PlainTyping()
{
    if (wasOpen_) askInputMethod(inputMethod_, kSetOpen, 1);
    if (!capsLock_) return;
    try {
        send(VK_CAPITAL, true);
        send(VK_CAPITAL, false);
    } catch (const std::system_error&) { // the user sees the lamp
    }
}

KeyPlayer::KeyPlayer(std::function<bool()> verified) : verified_(std::move(verified)) {}

KeyPlayer::~KeyPlayer()
{
    try {
        while (!held_.empty())
            release(held_.back());
    } catch (const std::system_error&) { // nothing was pressed that the system refused
    }
}

void KeyPlayer::play(const KeyStep& step)
{
    if (step.event.action == KeyAction::Release) return release(step.place.key);
    if (!verified_())
        throwSystemError(std::errc::operation_canceled, "another window has the keyboard");
    if (step.event.action == KeyAction::Press) return press(step.place.key);
    stroke(step.place);
}

void KeyPlayer::stroke(const KeyPlace& place)
{
    std::vector<WORD> own = place.held; // without those that are already down
    std::erase_if(own, [this](WORD key) { return std::ranges::find(held_, key) != held_.end(); });
    for (const WORD key : own)
        press(key);
    press(place.key);
    release(place.key);
    for (const WORD key : own)
        release(key);
}

void KeyPlayer::press(WORD key)
{
    held_.push_back(key);
    send(key, true);
}

void KeyPlayer::release(WORD key)
{
    std::erase(held_, key);
    send(key, false);
}

}
