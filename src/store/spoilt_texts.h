// What the user is to know about an archive that came from a Jet file.
#pragma once

namespace tolvek {

// A box with the number of fields that hold a U+0000, if any came since the last
// call: a part of the file was zeroed, and what stood there is lost, although
// nothing else is wrong with it. Nothing may be open.
void reportSpoiltTexts();

}
