// The windows of one process.
#pragma once
#include "platform/system/windows/windows_api.h"

#include <cstdint>
#include <vector>

namespace tolvek {

class ProcessWindows {
public:
    // Throws std::system_error if no window on the screen belongs to the process or to one
    // that it started.
    explicit ProcessWindows(std::int32_t processId);

    // The topmost window, or the dialog in front of it.
    HWND top() const;
    // True if the user's keys go to one of these processes now.
    bool haveKeyboard() const;

private:
    bool isOwn(HWND window) const;
    void findOwn();

    std::vector<std::int32_t> processes_;
    std::vector<HWND> own_; // top to bottom
};

}
