#include "letters/read_library.h"

#include "app/guard.h"
#include "letters/archive_stamps.h"
#include "letters/letter_reader.h"
#include "platform/system/private_folder.h"

#include <system_error>

namespace tolvek {

namespace {

constexpr int kBeingWritten = 3356;
constexpr int kMostRounds = 5;

Library::Source readOnce(const ArchiveFile& file, const LetterCache* cache)
{
    Library::Source source;
    source.status.file = file;
    try {
        source.letters = readLetterFile(file.path, cache);
        source.status.state = ReadState::Read;
        source.status.letters = source.letters->rows().size();
    } catch (const std::exception& failure) {
        const RuntimeError error = asRuntimeError(failure);
        source.status.state = ReadState::Failed;
        source.status.error = error.number();
        source.status.description = error.description();
    }
    return source;
}

Library::Source readPatiently(const ArchiveFile& file, const LetterCache* cache,
                              const StillWaiting& wait)
{
    Library::Source source = readOnce(file, cache);
    while (source.status.error == kBeingWritten && wait(file))
        source = readOnce(file, cache);
    return source;
}

// Names and states of all files.
struct Census {
    explicit Census(const std::vector<ArchiveFile>& files)
    {
        for (const ArchiveFile& file : files) {
            paths.push_back(file.path);
            stamps.push_back(stampsOf(file.path));
        }
    }
    bool operator==(const Census&) const = default;
    std::vector<std::filesystem::path> paths;
    std::vector<Stamps> stamps;
};

std::unique_ptr<LetterCache> cacheFor(const std::vector<Stamps>& stamps)
{
    try {
        const auto folder = letterCacheFolder();
        return isLarge(stamps, kMostInMemory) && !folder.empty()
                   ? std::make_unique<LetterCache>(folder)
                   : nullptr;
    } catch (const std::system_error&) {
        return nullptr; // a folder that can't be made is done without
    }
}

}

std::shared_ptr<const Library> readLibrary(const ListArchives& list, const StillWaiting& wait)
{
    std::vector<Library::Source> sources;
    for (int round = 0; round < kMostRounds; ++round) {
        const std::vector<ArchiveFile> files = list();
        const Census before(files);
        const auto cache = cacheFor(before.stamps);
        sources.clear();
        for (const ArchiveFile& file : files)
            sources.push_back(readPatiently(file, cache.get(), wait));
        if (before == Census(list())) break;
    }
    return std::make_shared<Library>(std::move(sources));
}

}
