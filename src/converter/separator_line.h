// The separator line of an mbox: "From ", a sender, a date.
//
// Mail texts contain lines that begin like this and were never escaped. Only the date
// at the end identifies a separator (and the empty line before it, which the caller
// checks).
#pragma once
#include <string>
#include <string_view>

namespace tolvek {

bool isSeparatorLine(std::string_view line);

// The date part of a separator, as written; empty without one.
std::string separatorDate(std::string_view line);

// The sender's address; empty for "-", "???@???" and lines without one.
std::string separatorSender(std::string_view line);

// Removes one ">" of those before a "From ".
std::string_view unstuffed(std::string_view line);

}
