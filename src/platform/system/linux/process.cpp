#include "platform/system/process.h"
#include "platform/system/test_hooks.h"

#include <chrono>
#include <thread>
#include <unistd.h>
#include <utility>

namespace tolvek {

namespace {

std::filesystem::path& windowsFolderOfTests()
{
    static std::filesystem::path folder;
    return folder;
}

}

void leaveProcess(int code)
{
    _exit(code);
}

void sleepMilliseconds(int count)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(count));
}

std::filesystem::path windowsFolder()
{
    return windowsFolderOfTests();
}

void hooks::setWindowsFolder(std::filesystem::path folder)
{
    windowsFolderOfTests() = std::move(folder);
}

}
