// Letters as JSON (RFC 8259, UTF-8), for scripts.
#pragma once
#include "letters/library.h"
#include "letters/query.h"

#include <string>

namespace tolvek {

// In quotes, escaped.
std::string jsonText(TextView text);

// One object on one line: id, date, time, sent, from, to (name and address; null where
// there is none), person, subject, line (the one that matched), files, text.
std::string jsonLetter(const Library& library, LetterId id, const LetterQuery& query);

}
