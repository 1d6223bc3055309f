// The sample: a folder like PostPet's, with five filled boxes and a friend book.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>
#include <vector>

namespace tolvek::sample {

struct SampleBox {
    Text folder, listFile, mailFile;
    int mails;
};

const std::vector<SampleBox>& sampleBoxes();

// Creates the folder; files of an earlier run are replaced. Gives the same bytes each
// time. Throws std::system_error and std::filesystem::filesystem_error.
void makeSampleFolder(const std::filesystem::path& folder);

}
