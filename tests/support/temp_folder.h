// A folder for each test, deleted with the object.
//
// It is made in TMPDIR if that is set; otherwise in the memory file system, if there is
// one with enough room, since the tests flush thousands of files; otherwise in the
// system's temporary folder.
#pragma once
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tolvek::test {

// Programs are started from these folders too, so it must not be mounted noexec.
inline bool takesTests(const char* memory)
{
    constexpr unsigned long long kRoom = 1ULL << 30; // for all tests running at the same time
    struct statvfs found;
    if (statvfs(memory, &found) != 0 || access(memory, W_OK | X_OK) != 0) return false;
    return (found.f_flag & (ST_NOEXEC | ST_RDONLY)) == 0 &&
           found.f_bavail * found.f_frsize >= kRoom;
}

inline std::filesystem::path folderForTests()
{
    constexpr const char* kMemory = "/dev/shm";
    const bool chosen = std::getenv("TMPDIR") != nullptr;
    return !chosen && takesTests(kMemory) ? kMemory : std::filesystem::temp_directory_path();
}

class TempFolder {
public:
    TempFolder()
    {
        std::string pattern = (folderForTests() / "tolvek-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

inline void writeBytes(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

inline std::string readBytes(const std::filesystem::path& path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

}
