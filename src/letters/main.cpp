// The process: with options a search for scripts, otherwise the window.
#include "letters/command_line.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"

#include <iostream>

int main(int argc, char** argv)
{
    using namespace tolvek;
    setAppPath(pathText(programFolder(argv[0])));
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return runCommandLine(arguments, std::cout, std::cerr);
}
