// Reads archives at once, without a worker thread.
#pragma once
#include "letters/library.h"

#include <functional>

namespace tolvek {

// Called before each further look at an archive that is being written; false gives up.
using StillWaiting = std::function<bool(const ArchiveFile&)>;

using ListArchives = std::function<std::vector<ArchiveFile>()>;

// Every source is Read, or Failed with its error (3356: given up). If a file has come or
// changed meanwhile, all is read again: a backup moves mails from one file to another.
std::shared_ptr<const Library> readLibrary(const ListArchives& list, const StillWaiting& wait);

}
