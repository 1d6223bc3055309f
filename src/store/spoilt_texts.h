// Reports lost text in an archive that came from a Jet file.
#pragma once

namespace tolvek {

// Shows a box with the number of fields with a U+0000 that were imported since the
// last call, if there were any. Such a field was zeroed in the Jet file: its text is
// lost, although the rest of the file is sound. No database may be open, since a box
// waits.
void reportSpoiltTexts();

}
