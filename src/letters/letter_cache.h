// Keeps the letters of large archives in files of the user's cache folder, so that they
// needn't be in memory, nor be read and folded again at the next start.
//
// A cache file belongs to one state of one archive file (its path, identity, size and last
// change) and is made again for another state. Nothing in it is the only copy of anything:
// it may be deleted at any time, and one that is damaged is made again.
#pragma once
#include "letters/letter_file.h"

#include <functional>

namespace tolvek {

class LetterCache {
public:
    // The folder is made if it is missing, for its owner only.
    explicit LetterCache(std::filesystem::path folder);

    // Null if there is none for this state of the archive.
    std::shared_ptr<const LetterFile> find(const std::filesystem::path& archive) const;
    // Lets `fill` write the letters and puts the file in place. Null if `fill` returns
    // false. Throws std::system_error; the caller may then do without a cache.
    using Fill = std::function<bool(LetterFileWriter&)>;
    std::shared_ptr<const LetterFile> make(const std::filesystem::path& archive,
                                           const Fill& fill) const;
    // Removes the files of archives that are gone: their mails may have been deleted on
    // purpose. Failures are left to the next time.
    void removeOrphans() const;

private:
    std::filesystem::path fileOf(const std::filesystem::path& archive) const;
    std::filesystem::path folder_;
};

}
