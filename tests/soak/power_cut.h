// The disk as a power cut leaves it: the content of each file and the names of each
// folder as they were flushed last.
//
// It observes the file operations of some work. Data that wasn't flushed, and names that
// were created, changed or removed before their folder was flushed, may or may not be
// on the disk after the cut. Two disks represent the possible outcomes: Unforced::Lost
// has none of it; Unforced::Torn has all names, and in each file the sectors of the
// first half as they were written last, the rest as flushed.
#pragma once
#include "platform/system/files.h"
#include "support/temp_folder.h"

#include <map>
#include <optional>
#include <utility>

namespace tolvek::test {

enum class Unforced { Lost, Torn };

class PowerCut {
public:
    explicit PowerCut(std::filesystem::path folder) : folder_(std::move(folder))
    {
        names_ = present();
        for (const auto& [name, file] : names_)
            forced_[file] = readBytes(folder_ / name);
    }

    // Called before each operation, when the effect of the previous one is known.
    void before(FileOperation operation, const std::filesystem::path& path)
    {
        settle();
        if (path.parent_path() == folder_ || path == folder_) last_ = {operation, path};
        if (operation == FileOperation::Create) isNew_ = !fileExists(path);
    }

    // Replaces the files of the folder by those of the disk.
    void cut(Unforced unforced)
    {
        const Names names = unforced == Unforced::Torn ? present() : names_;
        std::map<std::string, std::string> left;
        for (const auto& [name, file] : names)
            left[name] = contentsOf(name, file, unforced);
        for (const std::string& name : fileNames(folder_))
            std::filesystem::remove(folder_ / name);
        for (const auto& [name, bytes] : left)
            writeBytes(folder_ / name, bytes);
    }

private:
    using Names = std::map<std::string, int>; // to files, by our own numbering

    // The system reuses the inode number of a deleted file.
    int fileAt(const std::filesystem::path& path)
    {
        const auto [at, added] = files_.try_emplace(fileStamp(path).file, next_);
        if (added) ++next_;
        return at->second;
    }
    Names present()
    {
        Names names;
        for (const std::string& name : fileNames(folder_))
            names[name] = fileAt(folder_ / name);
        return names;
    }
    void settle()
    {
        if (!last_) return;
        const auto [operation, path] = *std::exchange(last_, std::nullopt);
        if (operation == FileOperation::FlushFolder) names_ = present();
        if (!fileExists(path)) return;
        if (operation == FileOperation::Create && isNew_) files_[fileStamp(path).file] = next_++;
        if (operation == FileOperation::Flush) force(path);
    }
    // The engine flushes the folder of a new journal together with the journal.
    void force(const std::filesystem::path& path)
    {
        const std::string name = path.filename().string();
        forced_[fileAt(path)] = readBytes(path);
        if (name.ends_with("-journal") || name.ends_with("-wal")) names_[name] = fileAt(path);
    }
    std::string contentsOf(const std::string& name, int file, Unforced unforced) const
    {
        constexpr std::size_t kSector = 512;
        const auto found = forced_.find(file);
        const std::string forced = found == forced_.end() ? "" : found->second;
        if (unforced == Unforced::Lost) return forced;
        const std::string written = readBytes(folder_ / name);
        const std::size_t half = written.size() / 2 / kSector * kSector;
        return written.substr(0, half) + (forced.size() > half ? forced.substr(half) : "");
    }

    struct Asked {
        FileOperation operation;
        std::filesystem::path path;
    };
    std::filesystem::path folder_;
    std::map<std::uint64_t, int> files_;
    int next_ = 0;
    Names names_;
    std::map<int, std::string> forced_;
    std::optional<Asked> last_;
    bool isNew_ = false;
};

}
