// The line between two mails of an mbox: "From ", a sender, a date.
//
// Mail texts hold lines that begin so and were never escaped; only the date at
// the end tells a separator (and the empty line before it, which the caller knows).
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

bool isSeparatorLine(std::string_view line);

// The date part of a separator, as written; empty without one.
std::string separatorDate(std::string_view line);

// The sender's address; empty for "-", "???@???" and lines without one.
std::string separatorSender(std::string_view line);

// "From " behind one or more ">" loses one of them.
std::string_view unstuffed(std::string_view line);

}
