#include "converter/iso2022jp.h"

#include "platform/runtime/codepage932.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <memory>

namespace tolvek {

namespace {

constexpr char kEsc = 0x1B;
constexpr char kShiftOut = 0x0E;
constexpr char kShiftIn = 0x0F;

// Plane 1 of JIS X 0213 is JIS X 0208 with additions; nothing of plane 2 is in code
// page 932.
enum class Set { Ascii, Kana, Jis, Jis0212, Plane2 };

struct Escape {
    std::string_view bytes; // after ESC
    Set set;
};

constexpr std::array<Escape, 12> kEscapes{{{"(B", Set::Ascii},
                                           {"(J", Set::Ascii},
                                           {"(H", Set::Ascii},
                                           {"(I", Set::Kana},
                                           {"$@", Set::Jis},
                                           {"$B", Set::Jis},
                                           {"$(@", Set::Jis},
                                           {"$(B", Set::Jis},
                                           {"$(D", Set::Jis0212},
                                           {"$(O", Set::Jis},
                                           {"$(Q", Set::Jis},
                                           {"$(P", Set::Plane2}}};

const Escape* escapeAt(std::string_view bytes)
{
    for (const Escape& escape : kEscapes)
        if (bytes.starts_with(escape.bytes)) return &escape;
    return nullptr;
}

bool isJisByte(char c)
{
    return c >= 0x21 && c <= 0x7E;
}

class Decoder {
public:
    explicit Decoder(std::string_view bytes) : rest_(bytes) {}

    Text decode()
    {
        while (!rest_.empty())
            step();
        flush();
        return std::move(text_);
    }

private:
    void step()
    {
        const char c = rest_.front();
        if (c == kEsc)
            takeEscape();
        else if (c == kShiftOut || c == kShiftIn)
            takeShift(c == kShiftOut);
        // Between SO and SI bytes are half-width kana, whatever set was chosen before.
        else if (isJisByte(c) && !shifted_ && set_ != Set::Ascii && set_ != Set::Kana)
            takePair();
        else
            takeByte(c);
    }

    void takeEscape()
    {
        rest_.remove_prefix(1);
        const Escape* escape = escapeAt(rest_);
        // An unknown escape loses its ESC alone; the rest stays readable.
        if (escape == nullptr) return;
        set_ = escape->set;
        shifted_ = false;
        rest_.remove_prefix(escape->bytes.size());
    }

    void takeShift(bool out)
    {
        shifted_ = out;
        rest_.remove_prefix(1);
    }

    void takePair()
    {
        const auto row = static_cast<unsigned char>(rest_[0]);
        const auto cell = static_cast<unsigned char>(rest_.size() > 1 ? rest_[1] : 0);
        if (!isJisByte(static_cast<char>(cell))) { // half a character becomes 〓
            run_ += "\x81\xAC";
            rest_.remove_prefix(1);
            return;
        }
        rest_.remove_prefix(2);
        if (set_ == Set::Plane2) {
            run_ += "\x81\xAC";
        } else if (set_ == Set::Jis) {
            run_ += ansiOfJis(row, cell);
        } else {
            flush();
            text_ += textOfJis0212(row, cell);
        }
    }

    void takeByte(char c)
    {
        rest_.remove_prefix(1);
        // Many senders forget the return to ASCII; every line starts in ASCII again.
        if (c == '\n' || c == '\r') {
            set_ = Set::Ascii;
            shifted_ = false;
        }
        const bool kana = (set_ == Set::Kana || shifted_) && c >= 0x21 && c <= 0x5F;
        run_ += kana ? static_cast<char>(c | 0x80) : c;
    }

    void flush()
    {
        text_ += fromAnsi(run_);
        run_.clear();
    }

    std::string_view rest_;
    std::string run_; // code page 932 bytes not yet converted
    Text text_;
    Set set_ = Set::Ascii;
    bool shifted_ = false;
};

constexpr std::size_t kRow = 94; // cells
constexpr unsigned char kFirst = 0x21;

std::bitset<kRow * kRow> assignedPairs()
{
    std::bitset<kRow * kRow> assigned;
    for (std::size_t at = 0; at < assigned.size(); ++at) {
        const auto row = static_cast<unsigned char>(kFirst + at / kRow);
        const auto cell = static_cast<unsigned char>(kFirst + at % kRow);
        const Text one = fromAnsi(ansiOfJis(row, cell));
        // fromAnsi gives ・ for an unassigned pair; only 2126h is that character
        // itself.
        const bool middleDot = row == '!' && cell == '&';
        assigned[at] = one.size() == 1 && (one[0] != u'\u30FB' || middleDot);
    }
    return assigned;
}

// Called for each character, so the table is built once for all texts.
bool isAssigned(std::string_view pair)
{
    static const std::bitset<kRow* kRow> assigned = assignedPairs();
    const auto place = [&](std::size_t at) { return static_cast<std::size_t>(pair[at] - kFirst); };
    return assigned[place(0) * kRow + place(1)];
}

// Contains kana, or isn't letters only: "$Bar(Baz)" in program code isn't JIS.
bool readsAsJis(std::string_view pairs)
{
    bool letters = true;
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2) {
        if (pairs[at] == '$' || pairs[at] == '%') return true;
        for (const char c : pairs.substr(at, 2))
            letters = letters && ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_');
    }
    return !pairs.empty() && !letters;
}

// The extent of "$B" or "$@", pairs, and "(B" or "(J" at the front; not whole if
// something else comes first. What was examined isn't examined again, so the cost is
// linear in a hostile line too.
struct Stripped {
    std::size_t length = 0;
    bool whole = false;
};

Stripped strippedAt(std::string_view bytes)
{
    if (!bytes.starts_with("$B") && !bytes.starts_with("$@")) return {1, false};
    std::size_t at = 2;
    while (at + 1 < bytes.size() && isJisByte(bytes[at]) && isJisByte(bytes[at + 1])) {
        const std::string_view pair = bytes.substr(at, 2);
        if (pair == "(B" || pair == "(J") return {at + 2, readsAsJis(bytes.substr(2, at - 2))};
        if (!isAssigned(pair)) break;
        at += 2;
    }
    return {at, false};
}

}

Text decodeIso2022Jp(std::string_view bytes)
{
    return Decoder(bytes).decode();
}

bool looksLikeIso2022Jp(std::string_view bytes)
{
    for (std::size_t at = bytes.find(kEsc); at != std::string_view::npos;
         at = bytes.find(kEsc, at + 1))
        if (escapeAt(bytes.substr(at + 1)) != nullptr) return true;
    const std::size_t out = bytes.find(kShiftOut);
    return out != std::string_view::npos && bytes.find(kShiftIn, out) != std::string_view::npos;
}

std::string restoreEscapes(std::string_view bytes)
{
    std::string restored;
    restored.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t next = std::min(bytes.find('$', at), bytes.size());
        const Stripped found =
            next == at ? strippedAt(bytes.substr(at)) : Stripped{next - at, false};
        const std::string_view run = bytes.substr(at, found.length);
        at += run.size();
        if (!found.whole) {
            restored += run;
            continue;
        }
        restored.append(1, kEsc).append(run.substr(0, run.size() - 2));
        restored.append(1, kEsc).append(run.substr(run.size() - 2));
    }
    return restored;
}

std::string ansiOfJis(unsigned char row, unsigned char cell)
{
    // Two rows of 94 cells share a lead byte; trail bytes skip 7Fh, lead bytes A0h to
    // DFh (half-width kana).
    const int index = row - 0x21;
    int lead = index / 2 + 0x81;
    if (lead > 0x9F) lead += 0x40;
    const int trail = index % 2 == 0 ? cell + 0x1F + (cell >= 0x60 ? 1 : 0) : cell + 0x7E;
    return {static_cast<char>(lead), static_cast<char>(trail)};
}

Text textOfJis0212(unsigned char row, unsigned char cell)
{
    // Opened once per thread: opening it per character dominated the time. U+3013 is
    // 〓.
    thread_local UErrorCode opened = U_ZERO_ERROR;
    thread_local const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(
        ucnv_open("EUC-JP", &opened), &ucnv_close);
    const std::array<char, 3> bytes{static_cast<char>(0x8F), static_cast<char>(row | 0x80),
                                    static_cast<char>(cell | 0x80)};
    std::array<char16_t, 8> units{};
    UErrorCode status = opened;
    const int length = ucnv_toUChars(converter.get(), units.data(), units.size(), bytes.data(),
                                     bytes.size(), &status);
    return U_SUCCESS(status) ? Text(units.data(), static_cast<std::size_t>(length))
                             : Text(u"\u3013");
}

}
