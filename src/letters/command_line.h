// TolvekLetters without a window, for scripts.
//
//     TolvekLetters --find WORDS [--exact] [--sent|--received] [--json] [--in PATH]...
//     TolvekLetters --export mbox|eml|text|html TARGET --find WORDS ...
//     TolvekLetters --help
//
// Without --in, the archives beside the program are searched. Letters are printed newest
// first and exported oldest first. What can't be read is said on the error output, and so
// is that an archive is being written; the program waits for that (--wait SECONDS).
//
// Exit codes: 0 found or exported; 1 nothing found (and nothing exported); 2 wrong usage;
// 3 an archive couldn't be read (what could be read is printed), or the export failed.
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
