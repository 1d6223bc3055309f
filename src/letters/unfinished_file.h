// A file that isn't there until it is complete.
#pragma once
#include <filesystem>

namespace tolvek {

// The name beside the target; the target's name with ".part" and, if need be, a number.
class UnfinishedFile {
public:
    explicit UnfinishedFile(std::filesystem::path target);
    // Without finish() the side file, or side folder, is removed.
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const std::filesystem::path& path() const { return side_; } // where to write
    // Flushes the file, renames it over the target and flushes the folder. Throws
    // std::system_error; the target is then what it was.
    void finish();
    // For a folder whose files are flushed already: std::errc::file_exists if there is
    // anything at the target.
    void finishFolder();

private:
    std::filesystem::path target_, side_;
    bool finished_ = false;
};

}
