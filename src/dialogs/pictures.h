// The program's own pictures, drawn at whatever size is asked for: a letter
// and the paw print of the one who brought it.
#pragma once
#include <QIcon>
#include <QRect>

class QPainter;

namespace tolvek {

void drawLetter(QPainter& painter, const QRect& area);
void drawPaw(QPainter& painter, const QRect& area);

// The letter with a paw on it, in the sizes that desktops ask for.
QIcon programIcon();

}
