// A friend book: the same bytes as vCards and as comma-delimited text.
#include "converter/friend_book.h"
#include "fuzz/fuzz_target.h"
#include "support/temp_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tolvek;
    static const test::TempFolder folder;
    static const test::TempFolder temp;
    const std::string bytes(fuzz::bytesOf(data, size));
    test::writeBytes(folder / "a.vcf", bytes);
    test::writeBytes(folder / "b.csv", bytes);
    const Conversion result = convertFriendBook(folder.path(), temp / "Friend.Tmp");
    fuzz::require(result.count >= 0);
    if (result.count == 0) return 0;
    const std::string written = test::readBytes(temp / "Friend.Tmp");
    fuzz::require(written.find('\0') == std::string::npos);
    fuzz::require(written.ends_with("\r\n"));
    return 0;
}
