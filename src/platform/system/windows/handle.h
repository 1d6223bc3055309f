// A system handle that is closed by its owner.
#pragma once
#include "platform/system/windows/system_failure.h"

#include <utility>

namespace tolvek {

class Handle {
public:
    Handle() = default;
    explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
    ~Handle() { close(); }
    Handle(Handle&& other) noexcept : handle_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }

    explicit operator bool() const { return handle_ != nullptr; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, nullptr); }
    // False for a failure that only closing reports.
    bool close() { return !handle_ || ::CloseHandle(release()); }

private:
    HANDLE handle_ = nullptr;
};

}
