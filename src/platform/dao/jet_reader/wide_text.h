// Converts a text of Jet 4 to UTF-16LE.
//
// A text that begins with FF FE is compressed: a character whose upper byte is 0 takes
// one byte, and a byte 0 switches between this form and the full one. The library's own
// conversion isn't used because it turns surrogates into question marks.
#pragma once
#include <string>
#include <string_view>

namespace tolvek::jet {

std::string wideText(std::string_view stored);

}
