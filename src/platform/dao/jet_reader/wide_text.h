// A text of Jet 4 as UTF-16LE.
//
// Where FF FE stands in front, the text is packed: a character whose upper byte
// is 0 takes one byte, and a byte 0 switches between this form and the full one.
// Done here, since the library turns surrogates into question marks.
#pragma once
#include <string>
#include <string_view>

namespace tolvek::jet {

std::string wideText(std::string_view stored);

}
