// One box of many mails, to measure with.
#pragma once
#include <filesystem>

namespace tolvek::sample {

// About 2 KB a mail, a few hundred correspondents, several years; the same
// bytes for the same count. Written as a stream. Throws std::system_error.
void makeBigBox(const std::filesystem::path& file, int mails);

}
