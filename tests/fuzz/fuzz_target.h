// Common to all fuzz targets: the function that takes one input, called again and
// again.
//
// With libFuzzer (clang) the library's main generates the inputs; with replay.cpp they
// are the files of a folder, under any compiler.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tolvek::fuzz {

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

// A violated condition aborts, so that the fuzzer keeps the input.
inline void require(bool kept)
{
    if (!kept) __builtin_trap();
}

}
