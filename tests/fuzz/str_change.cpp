// The decoding of one text record; the first two bytes are its length.
#include "converter/str_change.h"
#include "fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tolvek;
    if (size < 2) return 0;
    const std::size_t limit = data[0] * 256u + data[1];
    const ChangedText changed = strChange(fuzz::bytesOf(data + 2, size - 2), limit);
    fuzz::require(changed.ansi.size() <= limit);
    fuzz::require(changed.length >= 0 &&
                  static_cast<std::size_t>(changed.length) <= changed.ansi.size());
    fuzz::require(changed.ansi.find('\'') == std::string::npos);
    return 0;
}
