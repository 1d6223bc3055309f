// Operations composed of single operations, the same on every system.
#include "platform/system/files.h"

#include "platform/system/test_hooks.h"

#include <optional>
#include <system_error>
#include <utility>

namespace tolvek {

namespace fs = std::filesystem;

namespace {

FileProbe& probe()
{
    static FileProbe current;
    return current;
}

template <class Fits> std::vector<std::string> listedNames(const fs::path& folder, Fits fits)
{
    probeFile(FileOperation::List, folder);
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (!fits(entry)) continue;
        const std::u8string name = entry.path().filename().u8string();
        names.emplace_back(name.begin(), name.end());
    }
    return names;
}

bool isFileEntry(const fs::directory_entry& entry)
{
    std::error_code gone; // removed since the listing, or a dangling link
    return entry.exists(gone) && !entry.is_directory(gone);
}

bool isFolderEntry(const fs::directory_entry& entry)
{
    std::error_code gone;
    return entry.is_directory(gone);
}

fs::path folderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// New contents in a file beside the target. The destructor removes it unless it has
// replaced the target.
class SideFile {
public:
    explicit SideFile(const fs::path& target) : target_(target), path_(target)
    {
        path_ += kUnfinishedSuffix;
        file_.emplace(path_, OpenFile::Mode::Anew);
    }
    ~SideFile()
    {
        if (!file_) return;
        std::error_code beyondHelp; // the failure that led here is the one to report
        fs::remove(path_, beyondHelp);
    }
    SideFile(const SideFile&) = delete;
    SideFile& operator=(const SideFile&) = delete;

    void write(std::string_view bytes) { file_->write(bytes); }

    void takePlace()
    {
        finish();
        replaceFile(path_, target_);
        settle();
    }
    void takeFreePlace()
    {
        finish();
        renameFile(path_, target_);
        settle();
    }

private:
    void finish()
    {
        // The mode is set before the flush, so that the file is never visible under
        // its final name with another mode.
        if (fileExists(target_)) copyMode(target_, path_);
        file_->flush();
        file_->close();
    }
    void settle()
    {
        file_.reset();
        flushFolder(folderOf(target_));
    }

    fs::path target_;
    fs::path path_;
    std::optional<OpenFile> file_; // empty once it has replaced the target
};

template <class Sink> void readPieces(const fs::path& path, Sink sink)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::vector<char> buffer(1 << 16);
    while (const std::size_t size = file.read(buffer.data(), buffer.size()))
        sink(std::string_view(buffer.data(), size));
}

}

void hooks::setFileProbe(FileProbe newProbe)
{
    probe() = std::move(newProbe);
}

void probeFile(FileOperation operation, const fs::path& path)
{
    if (probe()) probe()(operation, path);
}

bool fileExists(const fs::path& path)
{
    std::error_code none;
    const fs::file_status status = fs::status(path, none);
    return fs::exists(status) && !fs::is_directory(status);
}

bool folderExists(const fs::path& path)
{
    std::error_code none;
    return fs::is_directory(path, none);
}

bool entryExists(const fs::path& path)
{
    std::error_code none;
    return fs::exists(path, none);
}

std::vector<std::string> fileNames(const fs::path& folder)
{
    return listedNames(folder, isFileEntry);
}

std::vector<std::string> folderNames(const fs::path& folder)
{
    return listedNames(folder, isFolderEntry);
}

std::vector<std::string> entryNames(const fs::path& folder)
{
    return listedNames(folder, [](const fs::directory_entry&) { return true; });
}

fs::path linkTarget(const fs::path& path)
{
    std::error_code none;
    return fs::is_symlink(path, none) && fs::exists(path, none) ? fs::canonical(path) : path;
}

void copyMode(const fs::path& from, const fs::path& to)
{
    fs::permissions(to, fs::status(from).permissions());
}

std::string readFile(const fs::path& path)
{
    std::string bytes;
    readPieces(path, [&](std::string_view piece) { bytes += piece; });
    return bytes;
}

void copyFileContents(const fs::path& from, const fs::path& to, bool failIfExists)
{
    probeFile(FileOperation::Copy, from);
    const fs::path target = failIfExists ? to : linkTarget(to);
    // Saves a useless copy; the final rename checks again.
    if (failIfExists && entryExists(to))
        throw std::system_error(std::make_error_code(std::errc::file_exists), to.string());
    if (isReadOnly(target)) // the replacement would ignore the mode
        throw std::system_error(std::make_error_code(std::errc::permission_denied), to.string());
    SideFile side(target);
    readPieces(from, [&](std::string_view piece) { side.write(piece); });
    if (failIfExists)
        side.takeFreePlace();
    else
        side.takePlace();
}

void replaceContents(const fs::path& path, std::string_view bytes)
{
    SideFile side(linkTarget(path));
    side.write(bytes);
    side.takePlace();
}

}
