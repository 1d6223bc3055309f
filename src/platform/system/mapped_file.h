// A file mapped into memory, to be read only.
#pragma once
#include <filesystem>
#include <string_view>

namespace tolvek {

class MappedFile {
public:
    // Throws as described in files.h. The file may be removed afterwards, but must not
    // become shorter.
    explicit MappedFile(const std::filesystem::path& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    // Begins at an address suitable for any type.
    std::string_view bytes() const { return {static_cast<const char*>(bytes_), size_}; }
    // The pages no longer count as this program's memory; the next look brings them back.
    void release() const;

private:
    void* bytes_ = nullptr;
    std::size_t size_ = 0;
};

}
