// Files and folders, the one place where the program's file operations pass.
//
// Every operation first asks the probe, by which a test makes a single one
// fail (throw std::system_error) or ends the process on the spot. Failures are
// std::system_error with the system's code; a layer above gives them numbers.
// An operation that is put together from others has its steps asked one by one,
// each with the path that it works on.
#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
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

using FileProbe = std::function<void(FileOperation, const std::filesystem::path&)>;
// An empty function takes the probe away.
void setFileProbe(FileProbe probe);
// For those who reach the disk by another road (the database engine's own
// file layer): asks the probe and nothing else.
void probeFile(FileOperation operation, const std::filesystem::path& path);

class OpenFile {
public:
    // Read takes plain files alone: a folder is is_a_directory, a pipe or a device
    // invalid_argument, and nothing of them makes it wait. Create empties an
    // existing file; CreateNew is file_exists then; Anew makes another file of that
    // name (of a link the name goes, not what it leads to). New files are open to
    // their owner alone.
    enum class Mode { Read, Create, CreateNew, Anew };
    OpenFile(const std::filesystem::path& path, Mode mode);
    ~OpenFile(); // closes without a word; call close() to hear of a failure
    OpenFile(OpenFile&&) noexcept;
    OpenFile& operator=(OpenFile&&) noexcept;

    std::size_t read(char* buffer, std::size_t size); // 0 at the end
    // From a place of its own, as much as is there; read() goes on where it was.
    std::size_t readAt(std::uint64_t place, char* buffer, std::size_t size) const;
    void write(std::string_view bytes);
    void flush(); // to the disk itself
    void close();

private:
    struct Handle;
    std::unique_ptr<Handle> handle_;
};

bool fileExists(const std::filesystem::path& path); // a file, not a folder; no failure
bool folderExists(const std::filesystem::path& path);
bool entryExists(const std::filesystem::path& path); // one of the two
// By the mode bits; the superuser's right to write all the same doesn't count.
// Also what this user can't write for any other reason. Nothing there: false.
bool isReadOnly(const std::filesystem::path& path);
// The names are UTF-8 on every system; bytes that aren't come as they are.
std::vector<std::string> fileNames(const std::filesystem::path& folder);   // files only, unsorted
std::vector<std::string> folderNames(const std::filesystem::path& folder); // links to folders too
std::vector<std::string> entryNames(const std::filesystem::path& folder);  // files and folders

std::string readFile(const std::filesystem::path& path);
void removeFile(const std::filesystem::path& path); // a folder is is_a_directory
// Target present: file_exists, and nothing has changed.
void renameFile(const std::filesystem::path& from, const std::filesystem::path& to);
// Atomic; the target may be there. Both in one folder.
void replaceFile(const std::filesystem::path& from, const std::filesystem::path& to);
void linkFile(const std::filesystem::path& existing, const std::filesystem::path& added);
// Contents, flushed, through a side file: a copy that fails or is cut off leaves
// what was there. Copy is asked first (with `from`), then the steps.
void copyFileContents(const std::filesystem::path& from, const std::filesystem::path& to,
                      bool failIfExists);
// `to` gets the permissions of `from`, and its owner where this user may give it.
void copyOwnerAndMode(const std::filesystem::path& from, const std::filesystem::path& to);
void flushFileToDisk(const std::filesystem::path& path);
void flushFolder(const std::filesystem::path& folder);
// Side file, flush, replace, flush of the folder; keeps the old file's mode, and
// a link stays a link to the file with the new contents. A failure before the
// replace leaves the old file; one of the last step is told though the new file
// is in its place.
void replaceContents(const std::filesystem::path& path, std::string_view bytes);

}
