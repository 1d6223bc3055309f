// Parses the dates of mails in all the forms met, and writes them in the one form that
// the reader of the temp file parses: "Tue, 15 Feb 2000 10:11:12 +0900".
//
// The time stays the sender's local time; the zone is only carried along.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvek {

struct MailDate {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    std::string zone; // "+0900"; empty if unknown
};

// Strict: what the field says, if it is a real date. Nearest: 31 Feb is the last of
// February, 25:00 is 23:59. That is for a mail without any other date, as a mail
// without one is not archived.
enum class DateRule { Strict, Nearest };

// Accepts the Internet and ctime forms; 2003/03/10 and similar, in any order that is
// possible, with "/" the month before the day; the writing of Japanese and other
// languages, Japanese eras; a missing or wrong day name; years of two digits (50 to 99
// are 19xx) and of three (counted from 1900); times with dots; missing seconds, time
// or zone.
std::optional<MailDate> parseMailDate(std::string_view text, DateRule rule = DateRule::Strict);

std::string formatMailDate(const MailDate& date);

// For comparisons: in UTC; a date without a zone counts as UTC.
std::int64_t secondsOf(const MailDate& date);

bool isDayName(std::string_view word); // "Tue", "Tue,", "Tuesday"

}
