#include "converter/mail_date.h"

#include "converter/ascii.h"

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
constexpr std::array<Zone, 13> kZones{{{"JST", "+0900"},
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
                                       {"PDT", "-0700"}}};

bool allDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

int number(std::string_view digits)
{
    return std::atoi(std::string(digits.substr(0, 6)).c_str());
}

// Comments out, quotes and full stops of a Japanese writing out; bytes beyond
// ASCII (a raw comment) are blanks.
std::string bare(std::string_view text)
{
    std::string out;
    int depth = 0;
    for (const char c : text) {
        if (c == '(') ++depth;
        if (depth == 0) out += c == '"' || c == '\'' || c < 0x20 ? ' ' : c;
        if (c == ')' && depth > 0) --depth;
    }
    return out;
}

int fullYear(std::string_view digits)
{
    const int year = number(digits);
    if (digits.size() >= 4) return year;
    if (digits.size() == 3) return 1900 + year;
    return year < 50 ? 2000 + year : 1900 + year;
}

class DateReader {
public:
    std::optional<MailDate> read(std::string_view text, DateRule rule)
    {
        for (const std::string& word : words(bare(text), " ,\t"))
            take(word);
        if (year_.empty() || day_ == 0) return std::nullopt;
        date_.year = fullYear(year_);
        date_.day = day_;
        if (afternoon_ && date_.hour < 12) date_.hour += 12;
        if (rule == DateRule::Nearest) bringNear();
        return isReal() ? std::optional(date_) : std::nullopt;
    }

private:
    void take(const std::string& word)
    {
        if (allDigits(word))
            takeNumber(word);
        else if (isAsciiDigit(static_cast<unsigned char>(word[0])) &&
                 word.find(':') != std::string::npos)
            takeTimeOrBoth(word);
        else if (isAsciiDigit(static_cast<unsigned char>(word[0])))
            takeJoined(words(word, "-/"));
        else if (const int month = monthNumber(word); month > 0 && date_.month == 0)
            date_.month = month;
        else
            takeZone(word);
    }

    void takeNumber(const std::string& word)
    {
        if (day_ == 0 && word.size() <= 2)
            day_ = number(word);
        else if (year_.empty())
            year_ = word;
    }

    // 2003/03/10, 2003-03-10, 15-Feb-2000
    void takeJoined(const std::vector<std::string>& parts)
    {
        if (parts.size() != 3 || !allDigits(parts[0]) || !allDigits(parts[2])) return;
        const bool yearFirst = parts[0].size() > 2;
        year_ = yearFirst ? parts[0] : parts[2];
        day_ = number(yearFirst ? parts[2] : parts[0]);
        date_.month = allDigits(parts[1]) ? number(parts[1]) : monthNumber(parts[1]);
    }

    // A time, or date and time with a T between them.
    void takeTimeOrBoth(const std::string& word)
    {
        const std::size_t mark = word.find('T');
        if (mark == std::string::npos) return takeTime(word);
        takeJoined(words(word.substr(0, mark), "-/"));
        takeTime(word.substr(mark + 1));
    }

    void takeTime(const std::string& word)
    {
        const std::size_t end = std::min(word.find_first_not_of("0123456789:."), word.size());
        const auto parts = words(word.substr(0, end), ":.");
        if (parts.size() < 2 || timeTaken_) return;
        timeTaken_ = true;
        date_.hour = number(parts[0]);
        date_.minute = number(parts[1]);
        date_.second = parts.size() > 2 ? std::min(number(parts[2]), 59) : 0;
        if (end < word.size()) takeZone(word.substr(end));
    }

    void takeZone(std::string word)
    {
        if (equalsAscii(word, "pm")) afternoon_ = true;
        if (equalsAscii(word, "am") && date_.hour == 12) date_.hour = 0;
        const std::size_t sign = word.find_first_of("+-");
        if (sign != std::string::npos) {
            word.erase(0, sign);
            std::erase(word, ':');
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

int monthNumber(std::string_view word)
{
    for (std::size_t index = 0; index < kMonths.size(); ++index)
        if (beginsLike(word, kMonths[index])) return static_cast<int>(index) + 1;
    return 0;
}

bool isDayName(std::string_view word)
{
    return std::any_of(kDays.begin(), kDays.end(),
                       [&](std::string_view day) { return beginsLike(word, day); });
}

}
