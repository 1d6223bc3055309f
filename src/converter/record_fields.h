// Fixed records of the converter's callers: text, NUL, blanks to the end. A
// record may lack the NUL when the text fills it.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace tolvek {

// Up to the NUL; without one, the whole record without the blanks at its end.
std::string recordText(const char* bytes, std::size_t size);

void fillRecord(char* bytes, std::size_t size, std::string_view text);

}
