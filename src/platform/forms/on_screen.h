// What the layers below ask of the screen without knowing it: message boxes and
// yields. Both are installed before main in every program that links a source which
// includes this header: each source of forms that waits or yields does. (A static
// library gives a program only the objects that it needs.)
#pragma once

namespace tolvek {

void showBoxesOnTheScreen();
void yieldToTheScreen();

inline const bool isOnTheScreen = [] {
    showBoxesOnTheScreen();
    yieldToTheScreen();
    return true;
}();

}
