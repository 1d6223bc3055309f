// Files and folders. All file operations of the program go through these functions.
//
// Every operation first asks the probe. Tests use it to make a single operation
// fail (by throwing std::system_error) or to end the process at that point.
// Failures are std::system_error with the system's error code; a higher layer maps
// them to error numbers. A compound operation asks the probe for each of its steps,
// with the path that the step works on.
#pragma once
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

enum class FileOperation {
    Open,
    Create,
    Read,
    Write,
    Flush,
    Truncate,
    Rename,
    Replace,
    Link,
    Remove,
    Copy,
    List,
    FlushFolder
};

// Only asks the probe (test_hooks.h): for code that accesses the disk in other ways, such as the
// database engine's file layer.
void probeFile(FileOperation operation, const std::filesystem::path& path);

class OpenFile {
public:
    // Read accepts regular files only: a folder throws is_a_directory, a pipe or
    // device invalid_argument, and opening one never blocks. Create truncates an
    // existing file; CreateNew throws file_exists for one. Anew first removes an
    // existing name and makes a new file (of a link, the link is removed and its
    // target stays). New files are accessible to their owner only; on Windows a new
    // file has the rights of its folder, as every file there.
    enum class Mode { Read, Create, CreateNew, Anew };
    OpenFile(const std::filesystem::path& path, Mode mode);
    ~OpenFile(); // ignores failures; call close() to have them thrown
    OpenFile(OpenFile&&) noexcept;
    OpenFile& operator=(OpenFile&&) noexcept;

    std::size_t read(char* buffer, std::size_t size); // 0 at the end
    // Reads up to `size` bytes at `place`, fewer only at the end of the file.
    // Doesn't move the position of read().
    std::size_t readAt(std::uint64_t place, char* buffer, std::size_t size) const;
    void write(std::string_view bytes);
    void flush(); // to the disk
    void close();

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

// true for a file, false for a folder; never throws
bool fileExists(const std::filesystem::path& path);
bool folderExists(const std::filesystem::path& path);
bool entryExists(const std::filesystem::path& path); // a file or a folder
// The name of an existing file or folder as its folder has it: on a system that doesn't
// distinguish case the path may be written otherwise.
std::filesystem::path nameOnDisk(const std::filesystem::path& path);
// Judged by the mode bits, so the superuser's right to write to any file doesn't
// count. Also true if this user can't write to the file for another reason. False
// if nothing is there.
bool isReadOnly(const std::filesystem::path& path);
// Whether the system's answer means that there is no room: the disk is full, or the
// user's share of it. Failures thrown here have the same code for both.
bool isFullDisk(int systemError);
// Names are UTF-8 on every system; names that aren't valid UTF-8 are returned
// unchanged.
std::vector<std::string> fileNames(const std::filesystem::path& folder); // files only, unsorted
// includes links to folders
std::vector<std::string> folderNames(const std::filesystem::path& folder);
std::vector<std::string> entryNames(const std::filesystem::path& folder); // files and folders

// The target of a link. Returns `path` itself if it isn't a link or its target is
// missing.
std::filesystem::path linkTarget(const std::filesystem::path& path);

// Equal stamps mean that nobody has written to the file or replaced it.
struct FileStamp {
    std::uint64_t device = 0, file = 0, size = 0;
    std::int64_t changed = 0; // nanoseconds, as fine as the file system records them
    bool operator==(const FileStamp&) const = default;
};
FileStamp fileStamp(const std::filesystem::path& path);

std::string readFile(const std::filesystem::path& path);
void removeFile(const std::filesystem::path& path); // throws is_a_directory for a folder
// If the target exists, throws file_exists and changes nothing.
void renameFile(const std::filesystem::path& from, const std::filesystem::path& to);
// Atomic. Replaces an existing target. Both paths must be in the same folder. On Windows
// the target may be open only if the file system is NTFS and whoever has it open shares
// it; otherwise nothing is changed after a second of trying.
void replaceFile(const std::filesystem::path& from, const std::filesystem::path& to);
void linkFile(const std::filesystem::path& existing, const std::filesystem::path& added);
// What a file being written beside its place is called until it takes its name. Not .tmp
// or .Mdb: the program deletes *.tmp when it ends and lists *.Mdb as backups.
inline constexpr std::string_view kUnfinishedSuffix = ".side";
// Copies and flushes the contents through a side file, so a copy that fails or is
// interrupted leaves the old target untouched. The probe is asked for Copy first
// (with `from`), then for the steps.
void copyFileContents(const std::filesystem::path& from, const std::filesystem::path& to,
                      bool failIfExists);
void copyMode(const std::filesystem::path& from, const std::filesystem::path& to);
// Gives `to` the permissions of `from`, and its owner if this user may change it.
void copyOwnerAndMode(const std::filesystem::path& from, const std::filesystem::path& to);
void flushFileToDisk(const std::filesystem::path& path);
// On Windows names are written through when they change, as far as the disk obeys; this
// flush of the folder itself is refused to most users there, and then no failure.
void flushFolder(const std::filesystem::path& folder);
// Flushes everything that was written to the file system of this folder: for many small
// files, which take too long one by one.
void flushFileSystemOf(const std::filesystem::path& folder);
// Writes a side file, flushes it, replaces the file and flushes the folder. The old
// file's mode is kept, and a link stays a link, to the file with the new contents.
// A failure before the replacement leaves the old file. A failure of the last step
// is thrown although the new file is already in place.
void replaceContents(const std::filesystem::path& path, std::string_view bytes);

}
