// A folder for each test, deleted with the object.
//
// It is made in TMPDIR if that is set; otherwise in the memory file system, if there is
// one with enough room, since the tests flush thousands of files; otherwise in the
// system's temporary folder. On Windows it is made in TOLVEK_TEST_FOLDER if that is set,
// otherwise in the temporary folder.
#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#if !defined(_WIN32)
#include <sys/statvfs.h>
#include <unistd.h>
#endif

namespace tolvek::test {

#if defined(_WIN32)
inline std::filesystem::path newFolderForTests()
{
    const char* chosen = std::getenv("TOLVEK_TEST_FOLDER");
    const std::filesystem::path above =
        chosen ? std::filesystem::path(chosen) : std::filesystem::temp_directory_path();
    std::random_device random;
    for (;;) {
        std::filesystem::path made = above / ("tolvek-" + std::to_string(random()));
        if (std::filesystem::create_directory(made)) return made;
    }
}
#else
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

inline std::filesystem::path newFolderForTests()
{
    std::string pattern = (folderForTests() / "tolvek-XXXXXX").string();
    return mkdtemp(pattern.data());
}
#endif

// A name is UTF-8 on every system.
inline std::filesystem::path pathOf(const std::string& name)
{
    return std::u8string(name.begin(), name.end());
}

class TempFolder {
public:
    TempFolder() : path_(newFolderForTests()) {}
    ~TempFolder()
    {
        std::error_code ignored;
#if defined(_WIN32)
        // The system removes no file that is marked as read-only.
        for (const auto& entry : std::filesystem::recursive_directory_iterator(path_, ignored))
            std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_write,
                                         std::filesystem::perm_options::add, ignored);
#endif
        std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::filesystem::path& path() const
    {
        return path_;
    }
    std::filesystem::path operator/(const std::string& name) const
    {
        return path_ / pathOf(name);
    }

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
