// Maps the file on standard input into memory, so that it can be read without
// opening anything.
#pragma once
#include <cstddef>

namespace tolvek {

class MappedInput {
public:
    MappedInput();
    ~MappedInput();
    MappedInput(const MappedInput&) = delete;
    MappedInput& operator=(const MappedInput&) = delete;

    // False if standard input isn't a regular file or can't be mapped. Says nothing
    // about the contents.
    bool isReadable() const { return isReadable_; }
    // not const because the library's C interface takes a plain pointer
    void* bytes() const { return bytes_; }
    std::size_t size() const { return size_; }

private:
    bool isReadable_ = false;
    void* bytes_ = nullptr;
    std::size_t size_ = 0;
};

}
