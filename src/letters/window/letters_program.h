// The window's side of TolvekLetters' command line.
//
//     TolvekLetters [--person ADDRESS-OR-NAME] [FILE-OR-FOLDER]...
//
// Without files the archives of the program's own folder are shown.
#pragma once
#include <string>
#include <vector>

namespace tolvek {

// Whether these arguments, without the program's name, ask for the window and not for the
// commands of letters/command_line.h.
bool wantsWindow(const std::vector<std::string>& arguments);

// Returns the exit code when the window has been closed.
int runLettersWindow(int argc, char** argv);

}
