// TolvekLetters without a window, for scripts.
//
//     TolvekLetters --find WORDS [--exact] [--json] [--in PATH]...
//     TolvekLetters --export mbox|eml|text|html TARGET --find WORDS ...
//     TolvekLetters --help
//
// Exit codes: 0 found or exported; 1 nothing found; 2 wrong usage; 3 an archive couldn't
// be read (what could be read is printed), or the export failed.
#pragma once
#include <iosfwd>
#include <string>
#include <vector>

namespace tolvek {

// Whether main must run runCommandLine instead of showing a window: there is any option.
// Arguments that are only paths are archives for the window to show.
bool wantsCommandLine(const std::vector<std::string>& arguments);

// `arguments` without the program's name, in UTF-8. Returns the exit code.
int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& errors);

}
