#include "platform/dao/jet_reader/wide_text.h"

#include "platform/dao/jet_reader/damage.h"

#include <algorithm>

namespace tolvek::jet {

namespace {

constexpr std::string_view kPacked = "\xFF\xFE"; // the mark of a compressed text

// A compressed text begins in the short form.
std::string unpacked(std::string_view packed)
{
    std::string text;
    bool isShort = true;
    while (!packed.empty()) {
        std::size_t taken = 1;
        if (packed.front() == '\0') {
            isShort = !isShort;
        } else if (isShort) {
            text += packed.front();
            text += '\0';
        } else {
            taken = 2;
            text += packed.substr(0, taken);
        }
        packed.remove_prefix(std::min(taken, packed.size()));
    }
    return text;
}

}

std::string wideText(std::string_view stored)
{
    std::string text =
        stored.starts_with(kPacked) ? unpacked(stored.substr(kPacked.size())) : std::string(stored);
    require(text.size() % 2 == 0, "half a character");
    return text;
}

}
