// The file on the standard input, mapped: it is read without any more opening.
#pragma once
#include <cstddef>

namespace tolvek {

class MappedInput {
public:
    MappedInput();
    ~MappedInput();
    MappedInput(const MappedInput&) = delete;
    MappedInput& operator=(const MappedInput&) = delete;

    // False for what is no file, or can't be mapped; says nothing about what is in it.
    bool isReadable() const { return isReadable_; }
    void* bytes() const { return bytes_; } // not const: the library's own old type
    std::size_t size() const { return size_; }

private:
    bool isReadable_ = false;
    void* bytes_ = nullptr;
    std::size_t size_ = 0;
};

}
