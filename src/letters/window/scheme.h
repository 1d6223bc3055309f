// The colours of the whole program: as the desktop has them, light or dark.
#pragma once
#include "letters/window/window_settings.h"

namespace tolvek {

// Called once, before the first window: remembers whether the desktop is dark, and gives
// the program its font, style and words.
void prepareSchemes();
void applyScheme(Scheme scheme);

}
