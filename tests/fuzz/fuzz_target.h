// What every fuzz target has: one input is given to it, again and again.
//
// Under libFuzzer (clang) the library's own main makes the inputs; with replay.cpp
// the files of a folder are the inputs, under any compiler.
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

// A broken promise ends the program, so that the fuzzer keeps the input.
inline void require(bool kept)
{
    if (!kept) __builtin_trap();
}

}
