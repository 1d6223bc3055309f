// The size of the whole primary screen, in twips.
#pragma once

namespace tolvek::Screen {

float Width();
float Height();

}
