// One large mail box, for benchmarks.
#pragma once
#include <filesystem>

namespace tolvek::sample {

// Writes `mails` mails of about 2 KB each, from a few hundred correspondents over
// several years. The same count gives the same bytes. Written as a stream. Throws
// std::system_error.
void makeBigBox(const std::filesystem::path& file, int mails);

}
