#include "converter/separator_line.h"

#include "converter/ascii.h"
#include "converter/date_text.h"
#include "converter/mail_date.h"

#include <algorithm>
#include <vector>

namespace tolvek {

namespace {

constexpr std::string_view kFrom = "From ";

bool isTime(const std::string& word)
{
    // At least "1:02"; the seconds may be missing.
    return word.size() >= 4 && isAsciiDigit(static_cast<unsigned char>(word[0])) &&
           std::count(word.begin(), word.end(), ':') >= 1 &&
           word.find_first_not_of("0123456789:") == std::string::npos;
}

bool isNumber(const std::string& word, std::size_t most)
{
    return !word.empty() && word.size() <= most &&
           word.find_first_not_of("0123456789") == std::string::npos;
}

bool isZone(const std::string& word)
{
    if (word.size() == 5 && (word[0] == '+' || word[0] == '-')) return isNumber(word.substr(1), 4);
    return !word.empty() && word.size() <= 5 && std::all_of(word.begin(), word.end(), [](char c) {
        return isAsciiLetter(static_cast<unsigned char>(c));
    });
}

// Tue Feb 15 10:11:12 [JST] 2000 [+0900]
bool isClockForm(const std::vector<std::string>& w, std::size_t at)
{
    if (w.size() < at + 5 || !isDayName(w[at]) || monthNumber(w[at + 1]) == 0) return false;
    if (!isNumber(w[at + 2], 2) || !isTime(w[at + 3])) return false;
    std::size_t year = at + 4;
    if (!isNumber(w[year], 4) && isZone(w[year])) ++year;
    if (year >= w.size() || !isNumber(w[year], 4) || w[year].size() != 4) return false;
    return year + 1 == w.size() || (year + 2 == w.size() && isZone(w[year + 1]));
}

// Tue, 15 Feb 2000 10:11:12 [+0900]
bool isMailForm(const std::vector<std::string>& w, std::size_t at)
{
    if (w.size() < at + 5 || !isDayName(w[at]) || !isNumber(w[at + 1], 2)) return false;
    if (monthNumber(w[at + 2]) == 0 || !isNumber(w[at + 3], 4) || !isTime(w[at + 4])) return false;
    return w.size() == at + 5 || (w.size() == at + 6 && isZone(w[at + 5]));
}

std::vector<std::string> separatorWords(std::string_view line)
{
    if (line.substr(0, kFrom.size()) != kFrom) return {};
    auto found = words(line.substr(kFrom.size()), " \t\r");
    // UUCP appends "remote from HOST" to the date.
    if (found.size() > 3 && found[found.size() - 3] == "remote" &&
        found[found.size() - 2] == "from")
        found.resize(found.size() - 3);
    return found;
}

std::size_t dateBegin(const std::vector<std::string>& found)
{
    // The sender may contain blanks, so the date may begin at any word.
    for (std::size_t at = 0; at < found.size(); ++at)
        if (isClockForm(found, at) || isMailForm(found, at)) return at;
    return found.size();
}

}

bool isSeparatorLine(std::string_view line)
{
    const auto found = separatorWords(line);
    return dateBegin(found) < found.size();
}

std::string separatorDate(std::string_view line)
{
    const auto found = separatorWords(line);
    std::string date;
    for (std::size_t at = dateBegin(found); at < found.size(); ++at)
        date += (date.empty() ? "" : " ") + found[at];
    return date;
}

std::string separatorSender(std::string_view line)
{
    const auto found = separatorWords(line);
    if (found.empty() || dateBegin(found) == 0) return {};
    const std::string& sender = found.front();
    // "???@???" is what a mail program wrote when it knew no sender.
    return sender.find('@') == std::string::npos || sender == "???@???" ? std::string() : sender;
}

std::string_view unstuffed(std::string_view line)
{
    const std::size_t marks = line.find_first_not_of('>');
    const bool stuffed =
        marks != std::string_view::npos && marks > 0 && line.substr(marks, kFrom.size()) == kFrom;
    return stuffed ? line.substr(1) : line;
}

}
