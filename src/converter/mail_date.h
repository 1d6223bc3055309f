// Dates of mails, from all the forms met, into the one form that the reader of
// the temp file takes apart: "Tue, 15 Feb 2000 10:11:12 +0900".
//
// The time stays the sender's own wall clock; a zone is only carried along.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvek {

struct MailDate {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    std::string zone; // "+0900"; empty when none could be told
};

// What the field says, strictly, or the nearest there is: 31 Feb as the last
// of February, 25:00 as 23:59. The latter is for a mail that has no other
// date, as a mail without one is not archived.
enum class DateRule { Strict, Nearest };

// Internet and ctime form, 2003/03/10 form and its kin in any order that is
// possible, with "/" the month before the day; Japanese and other languages'
// writing, Japanese eras; day name missing or wrong; years of two digits (50 to
// 99 are 19xx) and three (counted from 1900); times with dots; no seconds, no
// time, no zone.
std::optional<MailDate> parseMailDate(std::string_view text, DateRule rule = DateRule::Strict);

std::string formatMailDate(const MailDate& date);

// For comparing: in the world's time, without a zone as if it were that.
std::int64_t secondsOf(const MailDate& date);

bool isDayName(std::string_view word); // "Tue", "Tue,", "Tuesday"

}
