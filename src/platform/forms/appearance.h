// What the whole program looks like, whatever the desktop's theme: one light palette
// for all windows, dialogs, menus and tool tips, because the forms' own colours are
// light and fixed; the style that paints with that palette; the program's font; and
// the toolkit's own words (context menus, spoken actions) in Japanese.
#pragma once
#include <QPalette>

namespace tolvek {

// Every role in every group is set, so nothing of the desktop's palette shows through.
// Text has a contrast of 4.5 or more on the forms' backgrounds, disabled text of 3.
const QPalette& lightPalette();

// Called once, before the first window.
void setAppearance();

}
