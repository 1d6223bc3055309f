#include "platform/runtime/key_notation.h"

#include "platform/runtime/runtime_error.h"

#include <algorithm>
#include <optional>
#include <unicode/utf16.h>
#include <utility>

namespace tolvek {

namespace {

constexpr int kBadNotation = 5;
constexpr int kMostTimes = 32767;
constexpr int kFunctionKeys = 16;

struct KeyName {
    TextView name; // in lower case
    Key key;
};

constexpr KeyName kNames[] = {
    {u"enter", Key::Enter},
    {u"tab", Key::Tab},
    {u"esc", Key::Escape},
    {u"backspace", Key::Backspace},
    {u"bs", Key::Backspace},
    {u"bksp", Key::Backspace},
    {u"break", Key::Break},
    {u"capslock", Key::CapsLock},
    {u"clear", Key::Clear},
    {u"delete", Key::Delete},
    {u"del", Key::Delete},
    {u"down", Key::Down},
    {u"up", Key::Up},
    {u"left", Key::Left},
    {u"right", Key::Right},
    {u"end", Key::End},
    {u"home", Key::Home},
    {u"help", Key::Help},
    {u"insert", Key::Insert},
    {u"ins", Key::Insert},
    {u"numlock", Key::NumLock},
    {u"pgdn", Key::PageDown},
    {u"pgup", Key::PageUp},
    {u"prtsc", Key::PrintScreen},
    {u"scrolllock", Key::ScrollLock},
};

std::optional<Key> functionKey(TextView name)
{
    for (int number = 1; number <= kFunctionKeys; ++number)
        if (name == u"f" + decimal(number))
            return static_cast<Key>(static_cast<int>(Key::F1) + number - 1);
    return std::nullopt;
}

// The character at `at`, and moves `at` past it; a surrogate pair is one character.
char32_t nextCharacter(TextView text, std::size_t& at)
{
    UChar32 character = 0;
    U16_NEXT(text.data(), at, text.size(), character);
    return static_cast<char32_t>(character);
}

KeyEvent keyNamed(TextView name)
{
    std::size_t behindFirst = 0;
    const char32_t first = nextCharacter(name, behindFirst);
    // A single character stands for itself; names have at least two.
    if (behindFirst == name.size()) return {KeyAction::Stroke, Key::Character, first};
    const Text lower = lowerCase(name);
    const auto* found = std::ranges::find(kNames, TextView(lower), &KeyName::name);
    if (found != std::end(kNames)) return {KeyAction::Stroke, found->key};
    if (const auto key = functionKey(lower)) return {KeyAction::Stroke, *key};
    throw RuntimeError(kBadNotation);
}

int timesOf(TextView digits)
{
    int times = 0;
    for (const char16_t digit : digits) {
        if (digit < u'0' || digit > u'9') throw RuntimeError(kBadNotation);
        times = times * 10 + (digit - u'0');
        // Checked at each digit, so that the number can't overflow.
        if (times > kMostTimes) throw RuntimeError(kBadNotation);
    }
    if (times == 0) throw RuntimeError(kBadNotation);
    return times;
}

// Parses the text in one pass. Open groups are on an explicit stack, so any nesting
// depth is possible.
class NotationReader {
public:
    explicit NotationReader(TextView text) : text_(text) {}

    std::vector<KeyEvent> read()
    {
        while (at_ < text_.size())
            readNext();
        if (!groups_.empty()) throw RuntimeError(kBadNotation);
        release(waiting_);
        return std::move(events_);
    }

private:
    using Modifiers = std::vector<Key>;

    void readNext()
    {
        const char32_t character = nextCharacter(text_, at_);
        switch (character) {
        case U'+':
            return hold(Key::Shift);
        case U'^':
            return hold(Key::Control);
        case U'%':
            return hold(Key::Alt);
        case U'(':
            return openGroup();
        case U')':
            return closeGroup();
        case U'{':
            return readBraces();
        case U'}':
            throw RuntimeError(kBadNotation);
        case U'~':
            return stroke({KeyAction::Stroke, Key::Enter}, 1);
        default:
            return stroke({KeyAction::Stroke, Key::Character, character}, 1);
        }
    }

    // A modifier that is already held stays held for its first, longer scope; a
    // second press would cause an early release.
    void hold(Key modifier)
    {
        if (std::ranges::find(held_, modifier) != held_.end()) return;
        held_.push_back(modifier);
        waiting_.push_back(modifier);
        events_.push_back({KeyAction::Press, modifier});
    }

    void release(Modifiers& modifiers)
    {
        for (; !modifiers.empty(); modifiers.pop_back()) {
            std::erase(held_, modifiers.back());
            events_.push_back({KeyAction::Release, modifiers.back()});
        }
    }

    // The modifiers before the group are held until it ends.
    void openGroup() { groups_.push_back(std::exchange(waiting_, {})); }

    void closeGroup()
    {
        if (groups_.empty()) throw RuntimeError(kBadNotation);
        release(waiting_);
        release(groups_.back());
        groups_.pop_back();
    }

    // The first character always belongs to the name, so "{}}" is a "}".
    void readBraces()
    {
        const std::size_t end = text_.find(u'}', at_ + 1);
        if (end == TextView::npos) throw RuntimeError(kBadNotation);
        const TextView inside = text_.substr(at_, end - at_);
        at_ = end + 1;
        const std::size_t blank = inside.find(u' ', 1);
        const KeyEvent key = keyNamed(inside.substr(0, blank));
        stroke(key, blank == TextView::npos ? 1 : timesOf(ltrim(inside.substr(blank))));
    }

    void stroke(const KeyEvent& key, int times)
    {
        events_.insert(events_.end(), static_cast<std::size_t>(times), key);
        release(waiting_);
    }

    TextView text_;
    std::size_t at_ = 0;
    Modifiers held_;                // all modifiers that are down
    Modifiers waiting_;             // those of them for the next key or group
    std::vector<Modifiers> groups_; // those for each open group
    std::vector<KeyEvent> events_;
};

}

std::vector<KeyEvent> keyEvents(TextView notation)
{
    return NotationReader(notation).read();
}

}
