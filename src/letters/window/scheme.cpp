#include "letters/window/scheme.h"

#include "letters/window/colours.h"
#include "platform/forms/appearance.h"

#include <QApplication>
#include <QPalette>
#include <QToolTip>

namespace tolvek {

namespace {

bool desktopIsDark = false;

}

void prepareSchemes()
{
    desktopIsDark = isDark(QApplication::palette());
    setAppearance();
}

void applyScheme(Scheme scheme)
{
    const bool dark = scheme == Scheme::Dark || (scheme == Scheme::System && desktopIsDark);
    const QPalette palette = dark ? darkPalette() : lightPalette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    // Their boxes would have the colour of a dark window.
    QPalette boxes = palette;
    if (dark) boxes.setColor(QPalette::Base, boxes.color(QPalette::Light));
    for (const char* const widget : {"QCheckBox", "QRadioButton"})
        QApplication::setPalette(boxes, widget);
}

}
