// Fixed records of the library's callers: text, NUL, blanks to the end. The NUL may be
// missing if the text fills the record.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace tolvek {

// Up to the NUL; without one, the whole record without the blanks at its end.
std::string recordText(const char* bytes, std::size_t size);

void fillRecord(char* bytes, std::size_t size, std::string_view text);

}
