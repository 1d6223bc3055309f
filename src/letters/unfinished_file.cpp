#include "letters/unfinished_file.h"

#include "platform/system/files.h"

#include <string>
#include <system_error>

namespace tolvek {

namespace {

std::filesystem::path freeNameBeside(const std::filesystem::path& target)
{
    std::filesystem::path side = target;
    side += ".part";
    for (int number = 2; entryExists(side); ++number) {
        side = target;
        side += ".part" + std::to_string(number);
    }
    return side;
}

std::filesystem::path folderOf(const std::filesystem::path& path)
{
    return path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
}

}

UnfinishedFile::UnfinishedFile(std::filesystem::path target)
    : target_(std::move(target)), side_(freeNameBeside(target_))
{
}

UnfinishedFile::~UnfinishedFile()
{
    if (finished_) return;
    // What can't be removed has a name that says that it is a part.
    std::error_code ignored;
    std::filesystem::remove_all(side_, ignored);
}

void UnfinishedFile::finish()
{
    flushFileToDisk(side_);
    replaceFile(side_, target_);
    finished_ = true;
    flushFolder(folderOf(target_));
}

void UnfinishedFile::finishFolder()
{
    flushFolder(side_);
    if (entryExists(target_))
        throw std::system_error(std::make_error_code(std::errc::file_exists), target_.string());
    std::filesystem::rename(side_, target_);
    finished_ = true;
    flushFolder(folderOf(target_));
}

}
