// A file descriptor that is closed by its owner.
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
    // A duplicate whose number is at least `lowest`, above the descriptors that a
    // child process uses.
    Descriptor movedUp(int lowest) const
    {
        return Descriptor(systemCall({}, [&] { return fcntl(number_, F_DUPFD_CLOEXEC, lowest); }));
    }

private:
    int number_ = -1;
};

}
