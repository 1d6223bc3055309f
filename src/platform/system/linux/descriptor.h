// An open descriptor that is closed with its owner.
#pragma once
#include "platform/system/linux/system_failure.h"

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace tolvek {

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }

    int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }
    void close()
    {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }
    // The same with a number that a child's first descriptors don't take.
    Descriptor movedUp(int lowest) const
    {
        return Descriptor(systemCall({}, [&] { return fcntl(number_, F_DUPFD_CLOEXEC, lowest); }));
    }

private:
    int number_ = -1;
};

}
