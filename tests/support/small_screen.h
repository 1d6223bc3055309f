// A screen of that size for as long as the object lives.
#pragma once
#include "platform/forms/test_hooks.h"

namespace tolvek::test {

class SmallScreen {
public:
    SmallScreen(int width, int height)
    {
        hooks::setAvailableScreen([=] { return QRect(0, 0, width, height); });
    }
    ~SmallScreen() { hooks::setAvailableScreen({}); }
    SmallScreen(const SmallScreen&) = delete;
    SmallScreen& operator=(const SmallScreen&) = delete;
};

}
