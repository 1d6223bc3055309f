// Input # and line input on any file: both terminate, and fail only with the permitted
// errors.
#include "fuzz/fuzz_target.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text_files.h"
#include "support/temp_folder.h"

namespace {

using namespace tolvek;

// The first byte selects the order in which items are read.
void readAll(Int16 number, unsigned order)
{
    while (!endOfFile(number)) {
        switch (order % 3) {
        case 0:
            inputText(number);
            break;
        case 1:
            inputInt16(number);
            break;
        default:
            lineInput(number);
        }
        order = order / 3 + order % 3 * 81;
    }
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    static const test::TempFolder folder;
    test::writeBytes(folder / "file", std::string(fuzz::bytesOf(data + 1, size - 1)));
    const Int16 number = freeFile();
    openForInput(pathText(folder / "file"), number);
    try {
        readAll(number, data[0]);
    } catch (const RuntimeError& error) {
        fuzz::require(error.number() == 6 || error.number() == 62);
    }
    closeFile(number);
    return 0;
}
