// Starts TolvekLetters, the program that finds letters in all archives, where it lies
// beside this one.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

class frmTolvek;

// Ctrl+F. The correspondent selected in the navigator becomes the first search. Does
// nothing where the program isn't there, and while the commands are off.
void findLetters(frmTolvek& form);

// For tests: what starts the program, with its path and the correspondent (may be
// empty). An empty function restores the real one.
void setLettersStarter(std::function<void(const Text& program, const Text& person)> starter);

}
