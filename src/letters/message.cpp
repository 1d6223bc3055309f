#include "letters/message.h"

#include "letters/text_lines.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <vector>

namespace tolvek {

namespace {

constexpr std::size_t kEncodedBytes = 45; // of one encoded word; 60 characters of base64
constexpr std::size_t kLongestLine = 900; // the standard allows 998 bytes
constexpr std::size_t kBase64Bytes = 57;  // a line of 76 characters
constexpr std::size_t kEmptyLines = 3;    // of these, the reader keeps one

std::string base64(std::string_view bytes)
{
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view group = bytes.substr(at, 3);
        unsigned bits = 0;
        for (std::size_t byte = 0; byte < 3; ++byte)
            bits = bits << 8 | (byte < group.size() ? static_cast<unsigned char>(group[byte]) : 0u);
        for (std::size_t digit = 0; digit < 4; ++digit)
            out += digit <= group.size() ? kDigits[bits >> (18 - 6 * digit) & 0x3F] : '=';
    }
    return out;
}

bool isPrintableAscii(TextView text)
{
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= 0x20 && c < 0x7F; });
}

// As few encoded words as possible, without cutting a character.
std::string encodedWords(TextView text)
{
    const std::string bytes = toUtf8(text);
    std::string out;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t end = std::min(at + kEncodedBytes, bytes.size());
        while (end < bytes.size() && (static_cast<unsigned char>(bytes[end]) & 0xC0) == 0x80)
            --end;
        out += (at == 0 ? "" : "\n ") + ("=?UTF-8?B?" + base64(bytes.substr(at, end - at)) + "?=");
        at = end;
    }
    return out;
}

bool isPlain(TextView text)
{
    return isPrintableAscii(text) && text.find(u"=?") == TextView::npos;
}

std::string phrase(TextView name)
{
    if (!isPlain(name)) return encodedWords(name);
    std::string quoted = "\"";
    for (const char16_t c : name) {
        if (c == u'"' || c == u'\\') quoted += '\\';
        quoted += static_cast<char>(c);
    }
    return quoted + '"';
}

bool hasValue(TextView text)
{
    return !text.empty() && text != kNoLetterValue;
}

std::string mailbox(TextView name, TextView address)
{
    if (!hasValue(address)) return hasValue(name) ? phrase(name) : std::string();
    const std::string written = isPlain(address) ? toUtf8(address) : encodedWords(address);
    return (hasValue(name) ? phrase(name) + " " : std::string()) + "<" + written + ">";
}

std::string field(std::string_view name, const std::string& value)
{
    return value.empty() ? std::string() : std::string(name) + ": " + value + "\n";
}

int numberOf(TextView digits)
{
    int number = 0;
    for (const char16_t c : digits) {
        if (c < u'0' || c > u'9' || number > 99999) return -1;
        number = number * 10 + (c - u'0');
    }
    return digits.empty() ? -1 : number;
}

struct Moment {
    std::chrono::year_month_day day;
    int hour = 0, minute = 0, second = 0;
    bool isAsStored = true;
};

// The last four digits are month and day, whatever comes before is the year.
Moment momentOf(const Letter& letter)
{
    using namespace std::chrono;
    const TextView date = letter.date;
    const std::size_t split = date.size() < 4 ? 0 : date.size() - 4;
    const int year = numberOf(date.substr(0, split));
    const int month = numberOf(date.substr(split).substr(0, 2));
    const int dayOfMonth = date.size() < 4 ? -1 : numberOf(date.substr(split + 2));
    Moment moment;
    moment.day = std::chrono::year(std::clamp(year, 1, 9999)) /
                 std::chrono::month(static_cast<unsigned>(std::clamp(month, 1, 12))) /
                 std::chrono::day(static_cast<unsigned>(std::clamp(dayOfMonth, 1, 28)));
    const auto exact = std::chrono::year(year) / month / dayOfMonth;
    if (year > 0 && year <= 9999 && month > 0 && dayOfMonth > 0 && exact.ok()) moment.day = exact;
    const int time = numberOf(letter.time);
    moment.hour = std::clamp(time / 10000, 0, 23);
    moment.minute = std::clamp(time / 100 % 100, 0, 59);
    moment.second = std::clamp(time % 100, 0, 59);
    const int written = (moment.hour * 100 + moment.minute) * 100 + moment.second;
    moment.isAsStored = moment.day == exact && letter.time.size() == 6 && written == time;
    return moment;
}

constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

struct Names {
    const char *month, *weekday;
    unsigned day;
    int year;
};

Names namesOf(const Moment& moment)
{
    const std::chrono::weekday weekday{std::chrono::sys_days(moment.day)};
    return {kMonths[unsigned{moment.day.month()} - 1], kDays[weekday.c_encoding()],
            unsigned{moment.day.day()}, int{moment.day.year()}};
}

std::string dateField(const Letter& letter)
{
    const Moment moment = momentOf(letter);
    const Names names = namesOf(moment);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s, %02u %s %04d %02d:%02d:%02d +0900", names.weekday,
                  names.day, names.month, names.year, moment.hour, moment.minute, moment.second);
    std::string fields = field("Date", text.data());
    if (!moment.isAsStored)
        fields += field("X-Tolvek-Date", toUtf8(letter.date) + " " + toUtf8(letter.time));
    return fields;
}

std::string separator(const Letter& letter)
{
    const Moment moment = momentOf(letter);
    const Names names = namesOf(moment);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s %s %2u %02d:%02d:%02d %04d", names.weekday,
                  names.month, names.day, moment.hour, moment.minute, moment.second, names.year);
    const TextView address = letter.senderAddress;
    const bool isOneWord =
        hasValue(address) && isPlain(address) && address.find(u' ') == TextView::npos;
    return "From " + (isOneWord ? toUtf8(address) : std::string("-")) + " " + text.data() + "\n";
}

// The same letter always has the same, so that mail programs know it again.
std::string messageId(const Letter& letter)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%016llx",
                  static_cast<unsigned long long>(letter.identity));
    return "<" + std::string(text.data()) + "@letters.tolvek.invalid>";
}

bool looksLikeHeader(std::string_view line)
{
    const std::size_t name =
        line.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-");
    return name != std::string_view::npos && name > 0 && line[name] == ':';
}

// Whether every reader of mail boxes takes the line for what it is.
bool isHarmless(std::string_view line)
{
    std::string_view unquoted = line;
    while (unquoted.starts_with('>'))
        unquoted.remove_prefix(1);
    const bool isControlled = std::any_of(line.begin(), line.end(), [](char c) {
        return (c >= 0 && c < 0x20 && c != '\t') || c == 0x7F;
    });
    return line.size() <= kLongestLine && !isControlled && !unquoted.starts_with("From ") &&
           !line.starts_with('.') && !line.starts_with("begin ") && !looksLikeHeader(line);
}

std::vector<std::string> bodyLines(TextView text)
{
    std::vector<std::string> lines;
    TextLines rest(text);
    for (TextView line; rest.next(line);)
        for (std::size_t copy = 0; copy < (line.empty() ? kEmptyLines : 1); ++copy)
            lines.push_back(toUtf8(line));
    return lines;
}

std::string inBase64(std::string_view text)
{
    std::string out;
    for (; !text.empty(); text.remove_prefix(std::min(kBase64Bytes, text.size())))
        out += base64(text.substr(0, kBase64Bytes)) + "\n";
    return out;
}

}

std::string asMessage(const Letter& letter)
{
    const std::vector<std::string> lines = bodyLines(letter.text);
    const bool isPlainBody = std::all_of(lines.begin(), lines.end(),
                                         [](const std::string& line) { return isHarmless(line); });
    std::string body;
    for (const std::string& line : lines)
        body += line + "\n";
    const std::string subject =
        isPlain(letter.subject) ? toUtf8(letter.subject) : encodedWords(letter.subject);
    return field("From", mailbox(letter.senderName, letter.senderAddress)) +
           field("To", mailbox(letter.receiverName, letter.receiverAddress)) +
           field("Subject", subject) + dateField(letter) + field("Message-ID", messageId(letter)) +
           field("X-Tolvek-Direction", letter.sent ? "sent" : "received") +
           "MIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n" +
           field("Content-Transfer-Encoding", isPlainBody ? "8bit" : "base64") + "\n" +
           (isPlainBody ? body : inBase64(body));
}

std::string asMboxEntry(const Letter& letter)
{
    return separator(letter) + asMessage(letter) + "\n";
}

}
