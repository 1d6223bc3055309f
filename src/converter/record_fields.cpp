#include "converter/record_fields.h"

#include <algorithm>

namespace tolvek {

std::string recordText(const char* bytes, std::size_t size)
{
    const char* end = bytes + size;
    const char* nul = std::find(bytes, end, '\0');
    std::string text(bytes, nul);
    // Without a NUL the blanks are padding.
    if (nul == end) text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void fillRecord(char* bytes, std::size_t size, std::string_view text)
{
    std::fill(bytes, bytes + size, ' ');
    const std::size_t length = std::min(text.size(), size);
    std::copy_n(text.begin(), length, bytes);
    if (length < size) bytes[length] = '\0';
}

}
