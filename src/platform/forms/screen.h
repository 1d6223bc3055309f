// The primary screen, whole, in twips.
#pragma once

namespace tolvek::Screen {

float Width();
float Height();

}
