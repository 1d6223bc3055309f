// The colours that a palette doesn't have: marks of hits, and the two directions of mail.
// Chosen for the lightness of the palette's background, so light and dark palettes both
// give readable contrast.
#pragma once
#include <QColor>

class QPalette;

namespace tolvek {

struct LetterColours {
    QColor mark, markText;       // a hit
    QColor current, currentText; // the hit that F3 has reached
    QColor received, sent;
    QColor faint; // labels and axes
};

LetterColours coloursFor(const QPalette& palette);

bool isDark(const QPalette& palette);
// The counterpart of lightPalette() (platform/forms/appearance.h).
QPalette darkPalette();

}
