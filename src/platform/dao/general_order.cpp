#include "platform/dao/general_order.h"

#include "platform/dao/general_weights.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <vector>

namespace tolvek {

namespace {

constexpr std::size_t kKeyUnits = 255; // the rest of a text counts only for equality

TextView withoutTrailingBlanks(TextView text)
{
    while (!text.empty() && text.back() == u' ')
        text.remove_suffix(1);
    return text;
}

TextView keyPart(TextView text)
{
    return withoutTrailingBlanks(text.substr(0, kKeyUnits));
}

bool isProlongedMark(char16_t c)
{
    return c == u'\u30FC' || c == u'\uFF70';
}

// Iterates over the primary weights; remembers the previous one for repeat marks.
class Primaries {
public:
    explicit Primaries(TextView text) : text_(text) {}

    // The next character's primary; 0 at the end.
    std::uint32_t next()
    {
        while (position_ < text_.size()) {
            const std::uint32_t primary = primaryOf(text_[position_++]);
            if (primary != 0) return last_ = primary;
        }
        return 0;
    }

private:
    std::uint32_t primaryOf(char16_t c)
    {
        const Weight& weight = weightOf(c);
        if (weight.type == WeightType::R) return repeated(c);
        if (weight.primary != 0) kana_ = weight.type == WeightType::K;
        return weight.primary;
    }
    // The rules for type R in general_order.h; the constants are from there.
    std::uint32_t repeated(char16_t c) const
    {
        if (last_ == 0) return 0xFFFF;
        return kana_ && isProlongedMark(c) ? 0x7F00 | (last_ & 0x87) : last_;
    }

    TextView text_;
    std::size_t position_ = 0;
    std::uint32_t last_ = 0;
    bool kana_ = false;
};

// One to four bytes; the first byte of a primary is never 0.
void appendPrimary(std::string& bytes, std::uint32_t primary)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        if (primary >> shift != 0) bytes += static_cast<char>(primary >> shift & 0xFF);
}

// Primaries are compared byte by byte from the first byte, so the shorter one is padded
// with 00 at its end.
std::uint32_t leftAligned(std::uint32_t primary)
{
    while (primary != 0 && primary >> 24 == 0)
        primary <<= 8;
    return primary;
}

void appendPrimaries(std::string& bytes, TextView text)
{
    Primaries all(text);
    while (const std::uint32_t primary = all.next())
        appendPrimary(bytes, primary);
}

int comparePrimaryBytes(TextView a, TextView b)
{
    std::string left, right;
    appendPrimaries(left, a);
    appendPrimaries(right, b);
    return left.compare(right);
}

// Whether the shorter primary is a prefix of the longer one, in whole bytes.
bool startsWith(std::uint32_t longer, std::uint32_t shorter)
{
    for (; longer > shorter; longer >>= 8)
        if (longer >> 8 == shorter) return true;
    return false;
}

// Compares without building the keys, which most comparisons don't need.
int comparePrimaries(TextView a, TextView b)
{
    Primaries left(a), right(b);
    for (;;) {
        const std::uint32_t l = left.next(), r = right.next();
        if (l == r) {
            if (l == 0) return 0;
            continue;
        }
        if (l == 0 || r == 0) return l == 0 ? -1 : 1;
        // One is a prefix of the other, so the bytes of the following characters decide.
        if (startsWith(l, r) || startsWith(r, l)) return comparePrimaryBytes(a, b);
        return leftAligned(l) < leftAligned(r) ? -1 : 1;
    }
}

// Builds the key that general_order.h describes.
class KeyMaker {
public:
    std::string keyOf(TextView text)
    {
        for (const char16_t c : text)
            add(c, weightOf(c));
        return finished();
    }

private:
    void add(char16_t c, const Weight& weight)
    {
        switch (weight.type) {
        case WeightType::X:
            return;
        case WeightType::S:
            return addCharacter(weight.primary, 2, 0);
        case WeightType::I:
            return addCharacter(weight.primary, weight.secondary, 0);
        case WeightType::K:
            return addCharacter(weight.primary, weight.secondary ? weight.secondary : 2,
                                weight.kanaSize);
        case WeightType::M:
            return addMark(weight.secondary);
        case WeightType::W:
            return addIgnorable(weight.secondary);
        case WeightType::R:
            return addRepeat(c, weight.secondary);
        }
    }

    void addCharacter(std::uint32_t primary, std::uint8_t secondary, std::uint8_t kanaSize)
    {
        appendPrimary(primaries_, last_ = primary);
        secondaries_ += static_cast<char>(secondary);
        lastSize_ = kanaSize;
        if (kanaSize != 0) addKana(1);
    }
    void addKana(std::uint8_t mark)
    {
        sizes_.push_back(lastSize_);
        marks_.push_back(mark);
    }
    void addMark(std::uint8_t value)
    {
        if (secondaries_.empty())
            bareMarks_ = static_cast<char>(bareMarks_ + value);
        else
            secondaries_.back() = static_cast<char>(secondaries_.back() + value);
    }
    void addIgnorable(std::uint8_t code)
    {
        const std::size_t place = 0x8000 | (7 + 4 * secondaries_.size());
        ignorables_ += static_cast<char>(place >> 8);
        ignorables_ += static_cast<char>(place);
        ignorables_ += '\x06';
        ignorables_ += static_cast<char>(code);
    }
    void addRepeat(char16_t c, std::uint8_t secondary)
    {
        if (last_ == 0) {
            appendPrimary(primaries_, last_ = 0xFFFF);
            secondaries_ += static_cast<char>(secondary);
            return;
        }
        const bool prolongs = lastSize_ != 0 && isProlongedMark(c);
        if (prolongs) last_ = 0x7F00 | (last_ & 0x87);
        appendPrimary(primaries_, last_);
        secondaries_ += static_cast<char>(prolongs ? 2 : secondary);
        if (lastSize_ != 0) addKana(prolongs ? 3 : 2);
    }

    // Three codes of two bits per byte, with the upper bit set.
    static std::string pack(std::vector<std::uint8_t> codes, std::uint8_t usual)
    {
        while (!codes.empty() && codes.back() == usual)
            codes.pop_back();
        codes.resize((codes.size() + 2) / 3 * 3);
        std::string bytes;
        for (std::size_t i = 0; i < codes.size(); i += 3)
            bytes += static_cast<char>(0x80 | codes[i] << 4 | codes[i + 1] << 2 | codes[i + 2]);
        return bytes;
    }
    std::string significantSecondaries() const
    {
        std::size_t end = secondaries_.size();
        while (end > 0 && static_cast<unsigned char>(secondaries_[end - 1]) <= 2)
            --end;
        return secondaries_.substr(0, end);
    }
    std::string finished() const
    {
        const bool kana = !sizes_.empty(), ignorable = !ignorables_.empty();
        std::string key = primaries_ + '\x01';
        if (bareMarks_ != 0) key += bareMarks_;
        key += significantSecondaries();
        if (kana || ignorable) key += "\x01\x01";
        if (kana) key += pack(sizes_, 3) + '\xFF' + pack(marks_, 1) + "\x02\x80\xFF\x80";
        if (kana && ignorable) key += '\xFF';
        if (ignorable) key += '\x01' + ignorables_;
        return key += '\0';
    }

    std::string primaries_, secondaries_, ignorables_;
    std::vector<std::uint8_t> sizes_, marks_;
    std::uint32_t last_ = 0;
    std::uint8_t lastSize_ = 0;
    // The sum of marks before the first character. It isn't one of the secondaries: it is
    // never cut, and the positions of ignorable characters don't count it.
    char bareMarks_ = 0;
};

// The shortcut for ASCII is only for speed.
char16_t folded(char16_t c)
{
    if (c < 0x80) return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    return static_cast<char16_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

int compareFolded(TextView a, TextView b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int difference = folded(a[i]) - folded(b[i]); difference != 0) return difference;
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

// Letters, digits and signs of ASCII have only a primary weight.
bool hasPrimariesOnly(TextView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char16_t c) { return c < 0x80 && weightOf(c).type == WeightType::S; });
}

int compareKeys(TextView a, TextView b)
{
    if (const int order = comparePrimaries(a, b); order != 0) return order;
    if (hasPrimariesOnly(a) && hasPrimariesOnly(b)) return 0; // nothing else is in the keys
    return generalKey(a).compare(generalKey(b));
}

}

std::string generalKey(TextView text)
{
    return KeyMaker().keyOf(keyPart(text));
}

int compareGeneral(TextView a, TextView b)
{
    a = withoutTrailingBlanks(a);
    b = withoutTrailingBlanks(b);
    if (a == b) return 0;
    if (const int order = compareKeys(keyPart(a), keyPart(b)); order != 0) return order;
    return compareFolded(a, b);
}

}
