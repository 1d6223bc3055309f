#include "converter/mail_date.h"

#include "converter/ascii.h"
#include "converter/date_text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace tolvek {

namespace {

constexpr std::array<std::string_view, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<std::string_view, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

constexpr int kFirstYear = 1900; // a clock that was never set gives 1904 or 1956
constexpr int kLastYear = 9999;

struct Zone {
    std::string_view name, offset;
};
// The zones of RFC 822, and others met in mails. BST is British, CST and EST are
// American.
constexpr std::array<Zone, 19> kZones{{{"JST", "+0900"},
                                       {"GMT", "+0000"},
                                       {"UT", "+0000"},
                                       {"UTC", "+0000"},
                                       {"Z", "+0000"},
                                       {"EST", "-0500"},
                                       {"EDT", "-0400"},
                                       {"CST", "-0600"},
                                       {"CDT", "-0500"},
                                       {"MST", "-0700"},
                                       {"MDT", "-0600"},
                                       {"PST", "-0800"},
                                       {"PDT", "-0700"},
                                       {"CET", "+0100"},
                                       {"MET", "+0100"},
                                       {"CEST", "+0200"},
                                       {"MEST", "+0200"},
                                       {"BST", "+0100"},
                                       {"KST", "+0900"}}};

bool allDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

int number(std::string_view digits)
{
    // Six digits can't overflow an int.
    return std::atoi(std::string(digits.substr(0, 6)).c_str());
}

// 19103 was written by programs that put "19" before the years since 1900.
int fullYear(std::string_view digits)
{
    const int year = number(digits);
    if (digits.size() == 5 && digits.starts_with("19")) return 1900 + number(digits.substr(2));
    if (digits.size() >= 4) return year;
    if (digits.size() == 3) return 1900 + year;
    return year < 50 ? 2000 + year : 1900 + year;
}

// The year before the first of the era: 明治, 大正, 昭和, 平成, 令和. 0 for other letters.
int eraBegin(char letter)
{
    switch (letter) {
    case 'm':
        return 1867;
    case 't':
        return 1911;
    case 's':
        return 1925;
    case 'h':
        return 1988;
    case 'r':
        return 2018;
    default:
        return 0;
    }
}

bool isDigit(char c)
{
    return isAsciiDigit(static_cast<unsigned char>(c));
}

// Reduces "10th", "1st" and "3." to the number.
std::string withoutTail(std::string word)
{
    while (word.size() > 1 && word.back() == '.')
        word.pop_back();
    const std::string tail = lowerAscii(
        std::string_view(word).substr(word.size() - std::min<std::size_t>(2, word.size())));
    const bool ordinal = tail == "st" || tail == "nd" || tail == "rd" || tail == "th";
    if (ordinal && allDigits(std::string_view(word).substr(0, word.size() - 2)))
        word.resize(word.size() - 2);
    return word;
}

// 20030310T070809Z
bool isCompact(const std::string& word)
{
    // Eight digits of the date, T, six of the time.
    return word.size() >= 15 && word[8] == 'T' && allDigits(std::string_view(word).substr(0, 8)) &&
           allDigits(std::string_view(word).substr(9, 6));
}

constexpr std::string_view kJoins = "-/.\x01";

// Numbers and dots only: may be a day as well as a time.
bool isDotted(const std::string& word)
{
    return word.find('.') != std::string::npos &&
           word.find_first_not_of("0123456789.") == std::string::npos;
}

class DateReader {
public:
    std::optional<MailDate> read(std::string_view text, DateRule rule)
    {
        auto found = words(dateText(text), " ,\t");
        for (std::string& word : found)
            word = withoutTail(std::move(word));
        // Known before the words are taken: it decides what dotted numbers are.
        monthNamed_ = std::any_of(found.begin(), found.end(), [](const std::string& word) {
            return !isDigit(word[0]) && monthNumber(word) > 0;
        });
        for (const std::string& word : found)
            take(word);
        if (year_.empty() || day_ == 0) return std::nullopt;
        date_.year = era_ + (era_ > 0 ? number(year_) : fullYear(year_));
        date_.day = day_;
        // 12 am is midnight, and 12 pm noon.
        if (afternoon_ && date_.hour < 12) date_.hour += 12;
        if (morning_ && date_.hour == 12) date_.hour = 0;
        if (rule == DateRule::Nearest) bringNear();
        return isReal() ? std::optional(date_) : std::nullopt;
    }

private:
    void take(const std::string& word)
    {
        const bool afterDay = dayBefore_;
        dayBefore_ = false;
        if (allDigits(word))
            takeNumber(word);
        else if (isDigit(word[0]) && (word.find(':') != std::string::npos || isCompact(word)))
            takeTimeOrBoth(word);
        else if (isDotted(word) && isTimeByNow(word))
            takeTime(word);
        else if (isDigit(word[0]))
            takeJoined(word);
        else if (isEraDate(word))
            takeEra(word);
        // A month directly after the day replaces an earlier one: the name of a day
        // may begin like a month (French "mar" is Tuesday).
        else if (const int month = monthNumber(word); month > 0 && (date_.month == 0 || afterDay))
            date_.month = month;
        else
            takeZone(word);
    }

    void takeNumber(const std::string& word)
    {
        // 20030310 or 20030310070809
        if (year_.empty() && day_ == 0 && (word.size() == 8 || word.size() == 14)) {
            takeParts({word.substr(0, 4), word.substr(4, 2), word.substr(6, 2)}, kYearFirst);
            if (word.size() == 14) takeCompactTime(word.substr(8));
        } else if (day_ == 0 && word.size() <= 2) {
            day_ = number(word);
            dayBefore_ = true;
        } else if (year_.empty()) {
            year_ = word;
        }
    }

    // Dotted numbers are the time if a month is named or the day is known; two numbers
    // always are.
    bool isTimeByNow(const std::string& word) const
    {
        const auto dots = std::count(word.begin(), word.end(), '.');
        return dots == 1 || monthNamed_ || day_ > 0;
    }

    // 2003/03/10, 2003-03-10, 15-Feb-2000, 10.03.2003, 3/25/2003
    void takeJoined(const std::string& word)
    {
        const std::size_t join = word.find_first_of(kJoins);
        if (join == std::string::npos) return;
        const auto parts = words(word, kJoins);
        if (parts.size() == 2 && word[join] == kYearFirst)
            return takeParts({"", parts[0], parts[1]}, kYearFirst);
        if (parts.size() == 3) takeParts(parts, word[join]);
    }

    void takeParts(const std::vector<std::string>& parts, char join)
    {
        const auto dayLike = [](const std::string& part) {
            return part.size() <= 2 && number(part) >= 1 && number(part) <= 31;
        };
        const bool yearFirst = join == kYearFirst || (allDigits(parts[0]) && !dayLike(parts[0]));
        const std::string& year = yearFirst ? parts[0] : parts[2];
        const bool named = !allDigits(parts[0]) || !allDigits(parts[1]);
        // 3/25/2003 is American; with "-" or "." the day comes first. The swap below
        // corrects an impossible month.
        const bool monthFirst = !yearFirst && (named ? !allDigits(parts[0]) : join == '/');
        std::string month = yearFirst || !monthFirst ? parts[1] : parts[0];
        std::string day = yearFirst ? parts[2] : monthFirst ? parts[1] : parts[0];
        const auto possible = [](const std::string& text) {
            return allDigits(text) ? number(text) <= 12 : monthNumber(text) > 0;
        };
        if (!possible(month) && possible(day)) std::swap(month, day);
        if (!allDigits(day) || (!year.empty() && !allDigits(year))) return;
        if (!year.empty()) year_ = year;
        day_ = number(day);
        date_.month = allDigits(month) ? number(month) : monthNumber(month);
    }

    static bool isEraDate(const std::string& word)
    {
        return word.size() > 2 && isDigit(word[1]) && eraBegin(lowerAscii(word)[0]) > 0 &&
               word.find_first_of(kJoins) != std::string::npos;
    }

    void takeEra(const std::string& word)
    {
        const auto parts = words(word.substr(1), kJoins);
        if (parts.size() != 3) return;
        era_ = eraBegin(lowerAscii(word)[0]);
        takeParts(parts, kYearFirst);
    }

    // A time, or date and time in one word.
    void takeTimeOrBoth(const std::string& word)
    {
        const std::size_t mark = word.find('T');
        if (mark != std::string::npos) {
            takeDay(word.substr(0, mark));
            return isCompact(word) ? takeCompactTime(word.substr(mark + 1))
                                   : takeTime(word.substr(mark + 1));
        }
        const std::size_t colon = word.find(':');
        if (word.find_first_of("/\x01") < colon) {
            takeDay(word.substr(0, colon));
            return takeTime(word.substr(colon + 1));
        }
        takeTime(word);
    }

    void takeDay(const std::string& word) { allDigits(word) ? takeNumber(word) : takeJoined(word); }

    void takeCompactTime(const std::string& digits)
    {
        takeTime(digits.substr(0, 2) + ":" + digits.substr(2, 2) + ":" + digits.substr(4));
    }

    void takeTime(const std::string& word)
    {
        const std::size_t end = std::min(word.find_first_not_of("0123456789:."), word.size());
        const auto parts = words(word.substr(0, end), ":.");
        const bool hourAlone = parts.size() == 1 && word[end - 1] == ':';
        if ((parts.size() < 2 && !hourAlone) || timeTaken_) return;
        timeTaken_ = true;
        date_.hour = number(parts[0]);
        date_.minute = hourAlone ? 0 : number(parts[1]);
        date_.second = parts.size() > 2 ? std::min(number(parts[2]), 59) : 0; // a leap second
        if (end < word.size()) takeZone(word.substr(end));
    }

    void takeZone(std::string word)
    {
        if (equalsAscii(word, "pm")) afternoon_ = true;
        if (equalsAscii(word, "am")) morning_ = true;
        const std::size_t sign = word.find_first_of("+-");
        if (sign != std::string::npos) {
            word.erase(0, sign);
            std::erase(word, ':');
            // Only "+0900"; the reader parses no other form.
            if (word.size() == 5 && allDigits(std::string_view(word).substr(1))) date_.zone = word;
            return;
        }
        for (const Zone& zone : kZones)
            if (date_.zone.empty() && equalsAscii(word, zone.name)) date_.zone = zone.offset;
    }

    void bringNear()
    {
        using namespace std::chrono;
        const year_month month{std::chrono::year(date_.year),
                               std::chrono::month(static_cast<unsigned>(date_.month))};
        // Nothing is near without a real month and year.
        if (!month.ok() || date_.year < kFirstYear || date_.year > kLastYear) return;
        const auto last = static_cast<unsigned>((month / std::chrono::last).day());
        date_.day = std::clamp(date_.day, 1, static_cast<int>(last));
        if (date_.hour > 23) date_.hour = 23, date_.minute = 59;
        date_.minute = std::min(date_.minute, 59);
    }

    bool isReal() const
    {
        const std::chrono::year_month_day day{
            std::chrono::year(date_.year), std::chrono::month(static_cast<unsigned>(date_.month)),
            std::chrono::day(static_cast<unsigned>(date_.day))};
        return date_.year >= kFirstYear && date_.year <= kLastYear && day.ok() && date_.hour < 24 &&
               date_.minute < 60;
    }

    MailDate date_;
    std::string year_;
    int day_ = 0;
    bool timeTaken_ = false;
    bool afternoon_ = false;
    bool morning_ = false;
    bool monthNamed_ = false;
    bool dayBefore_ = false; // the previous word was the day
    int era_ = 0;
};

std::string_view dayName(const MailDate& date)
{
    const std::chrono::sys_days day = std::chrono::year(date.year) / date.month / date.day;
    return kDays[std::chrono::weekday(day).c_encoding()];
}

bool beginsLike(std::string_view word, std::string_view name)
{
    return word.size() >= 3 && equalsAscii(word.substr(0, 3), name);
}

}

std::optional<MailDate> parseMailDate(std::string_view text, DateRule rule)
{
    return DateReader().read(text, rule);
}

std::string formatMailDate(const MailDate& date)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%s, %02d %s %04d %02d:%02d:%02d",
                  dayName(date).data(), date.day,
                  kMonths[static_cast<std::size_t>(date.month - 1)].data(), date.year, date.hour,
                  date.minute, date.second);
    return buffer.data() + (date.zone.empty() ? std::string() : " " + date.zone);
}

std::int64_t secondsOf(const MailDate& date)
{
    using namespace std::chrono;
    const sys_days day = std::chrono::year(date.year) / date.month / date.day;
    const auto seconds =
        day.time_since_epoch() / 1s + date.hour * 3600L + date.minute * 60L + date.second;
    if (date.zone.size() != 5) return seconds;
    const int zone = number(date.zone.substr(1, 2)) * 3600 + number(date.zone.substr(3)) * 60;
    return seconds - (date.zone[0] == '-' ? -zone : zone);
}

bool isDayName(std::string_view word)
{
    return std::any_of(kDays.begin(), kDays.end(),
                       [&](std::string_view day) { return beginsLike(word, day); });
}

}
