// A mail box: whatever its bytes, the temp file keeps its grammar.
#include "converter/conversion.h"
#include "fuzz/fuzz_target.h"
#include "support/temp_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tolvek;
    static const test::TempFolder folder;
    test::writeBytes(folder / "box", std::string(fuzz::bytesOf(data, size)));
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    if (result.status != ConversionStatus::Converted) return 0;
    const std::string bytes = test::readBytes(folder / "Tolvek.Tmp");
    constexpr std::string_view kForbidden("\0\x1A\x1B'", 4);
    fuzz::require(bytes.starts_with("<Start>\r\n") &&
                  bytes.find_first_of(kForbidden) == std::string::npos);
    int ends = 0;
    for (std::size_t at = 0; (at = bytes.find("\r\n<End>\r\n", at)) != std::string::npos; ++at)
        ++ends;
    fuzz::require(ends == result.count);
    return 0;
}
