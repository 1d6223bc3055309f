#include "demo/sample_mail.h"

#include <array>
#include <cstdio>

namespace tolvek::sample {

namespace {

constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr std::array<const char*, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

struct Parts {
    const char *dayName, *month;
    int year, monthNumber, day, hour, minute, second;
};

Parts partsOf(std::chrono::sys_seconds time)
{
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date{day};
    const hh_mm_ss clock{time - day};
    const auto month = static_cast<unsigned>(date.month());
    return {kDays[weekday(day).c_encoding()],
            kMonths[month - 1],
            static_cast<int>(date.year()),
            static_cast<int>(month),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()),
            static_cast<int>(clock.seconds().count())};
}

template <class... Values> std::string printed(const char* pattern, Values... values)
{
    std::array<char, 96> buffer{};
    std::snprintf(buffer.data(), buffer.size(), pattern, values...);
    return buffer.data();
}

std::string clockForm(const Parts& p)
{
    return printed("%s %s %2d %02d:%02d:%02d %d", p.dayName, p.month, p.day, p.hour, p.minute,
                   p.second, p.year);
}

std::string dateValue(const SampleMail& mail)
{
    const Parts p = partsOf(mail.time);
    const std::string time = printed("%02d:%02d:%02d", p.hour, p.minute, p.second);
    const std::string day = printed("%d %s ", p.day, p.month);
    switch (mail.dateStyle) {
    case DateStyle::NoDayName:
        return day + printed("%d ", p.year) + time + " +0900";
    case DateStyle::TwoDigitYear:
        return std::string(p.dayName) + ", " + day + printed("%02d ", p.year % 100) + time +
               " +0900";
    case DateStyle::ThreeDigitYear:
        return day + printed("%d ", p.year - 1900) + time;
    case DateStyle::Clock:
        return clockForm(p);
    case DateStyle::Slashes:
        return printed("%d/%02d/%02d ", p.year, p.monthNumber, p.day) + time;
    case DateStyle::NamedZone:
        return std::string(p.dayName) + ", " + day + printed("%d ", p.year) + time + " JST";
    case DateStyle::NoSeconds:
        return day + printed("%d %d:%02d", p.year, p.hour, p.minute);
    default:
        return std::string(p.dayName) + ", " + day + printed("%d ", p.year) + time + " +0900";
    }
}

std::string mailbox(const SampleMail& mail, const Person& person)
{
    const std::string address = toUtf8(person.address);
    if (person.name.empty()) return address;
    switch (mail.nameStyle) {
    case NameStyle::Comment:
        return address + " (" + headerText(person.name, mail.charset) + ")";
    case NameStyle::RawAngle:
        return encoded(person.name, Charset::Iso2022Jp) + " <" + address + ">";
    default:
        return headerText(person.name, mail.charset) + " <" + address + ">";
    }
}

std::string head(const SampleMail& mail)
{
    std::string out =
        "From: " + mailbox(mail, mail.from) + "\nTo: " + mailbox(mail, mail.to) + "\n";
    out += "Subject: " + headerText(mail.letter.subject, mail.charset) + "\n";
    if (mail.dateStyle != DateStyle::Missing) out += "Date: " + dateValue(mail) + "\n";
    if (!mail.mimeHeaders) return out + "\n";
    static constexpr std::array<const char*, 3> kTransfers{"8bit", "base64", "quoted-printable"};
    return out + "MIME-Version: 1.0\nContent-Type: text/plain; charset=" + label(mail.charset) +
           "\nContent-Transfer-Encoding: " + kTransfers[static_cast<std::size_t>(mail.transfer)] +
           "\n\n";
}

std::string stuffed(std::string line)
{
    return line.starts_with("From ") ? ">" + line : line;
}

std::string base64Lines(const std::string& bytes)
{
    const std::string all = base64(bytes);
    std::string out;
    for (std::size_t at = 0; at < all.size(); at += 76)
        out += all.substr(at, 76) + "\n";
    return out;
}

std::string body(const SampleMail& mail)
{
    std::string out;
    for (const Text& text : mail.letter.lines) {
        const std::string line = encoded(text, mail.charset);
        out += mail.transfer == Transfer::QuotedPrintable ? quotedPrintable(line) : stuffed(line);
        out += "\n";
    }
    return mail.transfer == Transfer::Base64 ? base64Lines(out) : out;
}

}

std::string mboxText(const SampleMail& mail)
{
    return "From " + toUtf8(mail.from.address) + " " + clockForm(partsOf(mail.time)) + "\n" +
           head(mail) + body(mail) + "\n";
}

}
