// Formats a number by a pattern.
#include "platform/runtime/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace tolvek {

namespace {

struct Pattern {
    std::size_t integerDigits = 0;  // minimum
    std::size_t fractionDigits = 0; // minimum
    std::size_t places = 0;         // maximum
    bool point = false;
};

Pattern parsePattern(TextView text)
{
    const auto point = text.find(u'.');
    const TextView integer = text.substr(0, point);
    const TextView fraction = point == text.npos ? TextView() : text.substr(point + 1);
    const auto placeholdersOnly = [](TextView part) {
        return part.find_first_not_of(u"0#") == part.npos;
    };
    if (text.empty() || !placeholdersOnly(integer) || !placeholdersOnly(fraction))
        throw RuntimeError(5);
    const std::size_t first = std::min(integer.find(u'0'), integer.size());
    return {integer.size() - first, fraction.find_last_of(u'0') + 1, fraction.size(),
            point != text.npos};
}

// The decimal digits of a number; the point is before the digit `point`. The
// classic platform rounds the value at 15 digits, so that 0.285 is rounded as it is
// written and not as it is represented in memory.
struct Decimal {
    std::string digits;
    int point = 0;

    char at(int index) const
    {
        return index >= 0 && index < static_cast<int>(digits.size())
                   ? digits[static_cast<std::size_t>(index)]
                   : '0';
    }
};

Decimal decimalOf(double value)
{
    char buffer[32]; // d.dddddddddddddde+ddd
    // 14 digits after the point make 15 in all.
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                            std::chars_format::scientific, 14);
    const std::string text(buffer, end);
    const auto exponent = text.find('e');
    return {text.substr(0, 1) + text.substr(2, exponent - 2),
            std::stoi(text.substr(exponent + 1)) + 1};
}

void addOneAtTheEnd(Decimal& number)
{
    for (auto digit = number.digits.rbegin(); digit != number.digits.rend(); ++digit) {
        if (*digit != '9') {
            ++*digit;
            return;
        }
        *digit = '0';
    }
    // All digits were 9.
    number.digits.insert(0, 1, '1');
    ++number.point;
}

void roundHalfAway(Decimal& number, std::size_t places)
{
    const int kept = number.point + static_cast<int>(places);
    const bool up = number.at(kept) >= '5';
    if (kept < static_cast<int>(number.digits.size()))
        number.digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
    if (up) addOneAtTheEnd(number);
}

std::string integerPart(const Decimal& number, std::size_t atLeast)
{
    std::string text;
    for (int index = 0; index < number.point; ++index)
        text += number.at(index);
    text.erase(0, std::min(text.find_first_not_of('0'), text.size()));
    return std::string(atLeast - std::min(atLeast, text.size()), '0') + text;
}

std::string fractionPart(const Decimal& number, const Pattern& pattern)
{
    std::string text;
    for (std::size_t place = 0; place < pattern.places; ++place)
        text += number.at(number.point + static_cast<int>(place));
    while (text.size() > pattern.fractionDigits && text.back() == '0')
        text.pop_back();
    return text;
}

}

Text format(double value, TextView pattern)
{
    const Pattern parsed = parsePattern(pattern);
    if (!std::isfinite(value)) throw RuntimeError(6);
    Decimal number = decimalOf(value);
    roundHalfAway(number, parsed.places);
    // A negative number that rounds to zero has no minus.
    const bool isZero = number.digits.find_first_not_of('0') == std::string::npos;
    const std::string text = (value < 0 && !isZero ? "-" : "") +
                             integerPart(number, parsed.integerDigits) + (parsed.point ? "." : "") +
                             fractionPart(number, parsed);
    return Text(text.begin(), text.end());
}

Text format(TextView value, TextView pattern)
{
    return isNumeric(value) ? format(toDouble(value), pattern) : Text(value);
}

}
