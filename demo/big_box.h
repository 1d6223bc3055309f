// One large mail box, for benchmarks.
#pragma once
#include "demo/sample_mail.h"

#include <filesystem>

namespace tolvek::sample {

// One mail of the box. The same number gives the same mail.
SampleMail bigMail(int number);

// Writes `mails` mails of about 2 KB each, from a few hundred correspondents over
// several years. The same count gives the same bytes. Written as a stream. Throws
// std::system_error.
void makeBigBox(const std::filesystem::path& file, int mails);

}
