// Checked 16-bit integers and arrays, as on the classic platform.
//
// A value outside -32768..32767 is error 6, an index outside an array error 9. The
// routine reports both to the user, so neither may wrap around.
#pragma once
#include "platform/runtime/runtime_error.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tolvek {

class Int16 {
public:
    constexpr Int16() = default;
    // Both conversions are implicit, as on the classic platform.
    constexpr Int16(int value) : value_(checked(value)) {} // NOLINT
    constexpr operator int() const { return value_; }      // NOLINT

    constexpr Int16& operator+=(int step) { return *this = Int16(value_ + step); }
    constexpr Int16& operator-=(int step) { return *this = Int16(value_ - step); }
    constexpr Int16& operator++() { return *this += 1; }
    constexpr Int16& operator--() { return *this -= 1; }

private:
    static constexpr std::int16_t checked(int value)
    {
        if (value < INT16_MIN || value > INT16_MAX) throw RuntimeError(6);
        return static_cast<std::int16_t>(value);
    }
    std::int16_t value_ = 0;
};

// A fixed array with checked bounds: an index outside 0..N-1 is error 9.
template <class T, std::size_t N> class CheckedArray {
public:
    T& operator[](int index) { return items_[position(index)]; }
    const T& operator[](int index) const { return items_[position(index)]; }
    static constexpr int size() { return static_cast<int>(N); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    static std::size_t position(int index)
    {
        if (index < 0 || index >= static_cast<int>(N)) throw RuntimeError(9);
        return static_cast<std::size_t>(index);
    }
    std::array<T, N> items_{};
};

}
