// The program's own pictures, drawn at any size: a letter, and the paw print of the pet
// that brought it.
#pragma once
#include <QIcon>
#include <QRect>

class QPainter;

namespace tolvek {

void drawLetter(QPainter& painter, const QRect& area);
void drawPaw(QPainter& painter, const QRect& area);

// The letter with a paw on it, in the sizes that desktops use.
QIcon programIcon();

}
