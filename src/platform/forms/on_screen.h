// Installs the services that lower layers use without knowing the screen: message
// boxes and yields. A program that links a form has both installed before main.
#pragma once

namespace tolvek {

void showBoxesOnTheScreen();
void yieldToTheScreen();

}
