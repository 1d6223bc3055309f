// What the layers below ask of the screen without knowing it: message boxes and
// yields. Whoever links a form has both installed before main.
#pragma once

namespace tolvek {

void showBoxesOnTheScreen();
void yieldToTheScreen();

}
