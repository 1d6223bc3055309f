// Converts text to numbers.
#include "platform/runtime/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace tolvek {

namespace {

struct Number {
    double value = 0;
    bool bits = false; // written as &H or &O
};

// Converts full-width digits and signs to ASCII; any other non-ASCII character
// becomes one that isn't part of a number.
std::string narrow(TextView text)
{
    std::string result;
    for (const char16_t c : text) {
        const bool wide = c >= u'\uFF01' && c <= u'\uFF5E';
        const int plain = wide ? c - 0xFEE0 : c;
        result += plain < 0x80 ? static_cast<char>(plain) : '?';
    }
    return result;
}

// Parses a number and collects it in the form that std::from_chars takes.
class NumberReader {
public:
    explicit NumberReader(std::string text) : text_(std::move(text)) {}

    Number read()
    {
        if (peek() == '&') return {readBits(), true};
        readSign();
        readMantissa();
        readExponent();
        if (at_ != text_.size()) throw RuntimeError(13);
        return {converted(), false};
    }

private:
    char peek() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool atDigit() const { return peek() >= '0' && peek() <= '9'; }
    void take() { number_ += text_[at_++]; }

    void readSign()
    {
        if (peek() == '-')
            take();
        else if (peek() == '+')
            ++at_;
    }

    std::size_t readDigits()
    {
        const std::size_t before = number_.size();
        while (atDigit())
            take();
        return number_.size() - before;
    }

    void readMantissa()
    {
        std::size_t digits = readDigits();
        // Commas are accepted anywhere after the first digit, not only every three
        // digits.
        while (digits > 0 && peek() == ',') {
            ++at_;
            digits += readDigits();
        }
        if (peek() == '.') {
            take();
            digits += readDigits();
        }
        if (digits == 0) throw RuntimeError(13);
    }

    void readExponent()
    {
        // "D" marks the exponent of a double on the classic platform.
        if (std::string_view("eEdD").find(peek()) == std::string_view::npos) return;
        ++at_;
        number_ += 'e';
        smallExponent_ = peek() == '-';
        readSign();
        if (readDigits() == 0) throw RuntimeError(13);
    }

    double converted() const
    {
        double value = 0;
        const auto [end, error] =
            std::from_chars(number_.data(), number_.data() + number_.size(), value);
        if (error == std::errc::result_out_of_range && !smallExponent_) throw RuntimeError(6);
        return value; // 0 if the number is too small to represent
    }

    double readBits() const
    {
        const char letter = text_.size() > 2 ? text_[1] : '\0';
        const bool hex = letter == 'H' || letter == 'h', octal = letter == 'O' || letter == 'o';
        if (!hex && !octal) throw RuntimeError(13);
        std::uint32_t value = 0;
        const char* const last = text_.data() + text_.size();
        const auto [end, error] = std::from_chars(text_.data() + 2, last, value, hex ? 16 : 8);
        if (end != last) throw RuntimeError(13);
        if (error != std::errc()) throw RuntimeError(6);
        return value;
    }

    std::string text_, number_;
    std::size_t at_ = 0;
    bool smallExponent_ = false;
};

Number parse(TextView text)
{
    return NumberReader(narrow(trim(text))).read();
}

double roundedToEven(double value)
{
    return value - std::remainder(value, 1.0);
}

template <class Integer> Integer inRange(double value)
{
    const double rounded = roundedToEven(value);
    const bool fits = rounded >= std::numeric_limits<Integer>::min() &&
                      rounded <= std::numeric_limits<Integer>::max();
    if (!fits) // NaN doesn't fit either
        throw RuntimeError(6);
    return static_cast<Integer>(rounded);
}

template <class Integer> Integer toInteger(TextView text)
{
    const Number number = parse(text);
    if (!number.bits) return inRange<Integer>(number.value);
    // &H and &O give the bits, so the unsigned range decides.
    return static_cast<Integer>(inRange<std::make_unsigned_t<Integer>>(number.value));
}

}

double toDouble(TextView text)
{
    return parse(text).value;
}

Int16 toInt16(TextView text)
{
    return toInteger<std::int16_t>(text);
}

std::int32_t toInt32(TextView text)
{
    return toInteger<std::int32_t>(text);
}

bool isNumeric(TextView text)
{
    try {
        parse(text);
    } catch (const RuntimeError&) {
        return false; // the answer, not an error
    }
    return true;
}

}
