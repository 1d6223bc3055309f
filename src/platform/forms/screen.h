// The screen: its size, and what the layers below ask of it without knowing it.
#pragma once
#include <QRect>

class QWidget;

namespace tolvek {

namespace Screen {

// Of the whole primary screen, in twips.
float Width();
float Height();

// The part of the window's screen that windows may cover, in pixels.
QRect available(const QWidget& window);

}

// Message boxes and yields are installed before main in every program that links a
// source which includes this header: each source of forms that waits or yields does. (A
// static library gives a program only the objects that it needs.)
void showBoxesOnTheScreen();
void yieldToTheScreen();

inline const bool isOnTheScreen = [] {
    showBoxesOnTheScreen();
    yieldToTheScreen();
    return true;
}();

}
