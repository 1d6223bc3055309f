// TolvekLetters: with options a command for scripts, else the window.
#include "letters/command_line.h"
#include "letters/window/letters_program.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"

#include <iostream>

int main(int argc, char** argv)
{
    // The reader of Jet files is beside the program.
    tolvek::setAppPath(tolvek::pathText(tolvek::programFolder(argv[0])));
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (tolvek::wantsWindow(arguments)) return tolvek::runLettersWindow(argc, argv);
    return tolvek::runCommandLine(arguments, std::cout, std::cerr);
}
