#include "converter/friend_book.h"

#include "converter/ascii.h"
#include "converter/csv_book.h"
#include "converter/temp_file.h"
#include "converter/vcard.h"

#include <algorithm>
#include <limits>
#include <set>
#include <system_error>
#include <utility>

namespace tolvek {

namespace {

constexpr std::size_t kMost = std::numeric_limits<std::int16_t>::max();

using ReadBook = void (*)(const BookFile&, const FriendSink&);

// Null for a file of another kind.
ReadBook readerOf(const std::filesystem::path& name)
{
    const std::string extension = lowerAscii(name.extension().string());
    if (extension == ".vcf") return readVcards;
    return extension == ".csv" ? readCsvBook : nullptr;
}

std::vector<std::filesystem::path> bookNames(const std::filesystem::path& folder)
{
    std::vector<std::string> names = fileNames(folder);
    // Folders have no order of their own, and the first of several equal addresses
    // wins.
    std::sort(names.begin(), names.end());
    std::vector<std::filesystem::path> books;
    for (const std::string& name : names)
        if (std::filesystem::path path = std::u8string(name.begin(), name.end()); readerOf(path))
            books.push_back(std::move(path));
    return books;
}

// The friends of all files, each address once. The program compares addresses without
// case too. The entries of the current file are kept apart until it is known to fit.
class Friends {
public:
    void add(const FriendEntry& entry)
    {
        if (tooMany_) return;
        const auto record = friendRecord(entry);
        if (!record) return;
        const Text key = lowerCase(record->address);
        if (known_.contains(key) || !newKeys_.insert(key).second) return;
        newLines_ += record->line;
        // The rest of this file is skipped then; endFile() drops what came of it.
        tooMany_ = count() + newKeys_.size() > kMost;
    }
    // Ends a file; false if its friends would exceed the count.
    bool endFile()
    {
        const bool fits = !std::exchange(tooMany_, false);
        if (fits) known_.merge(newKeys_);
        if (fits) lines_ += newLines_;
        newKeys_.clear();
        newLines_.clear();
        return fits;
    }
    std::size_t count() const { return known_.size(); }
    const std::string& lines() const { return lines_; }

private:
    std::set<Text> known_, newKeys_;
    std::string lines_, newLines_;
    bool tooMany_ = false;
};

// False if the file is left out.
bool readFile(const std::filesystem::path& path, Friends& friends)
{
    try {
        const auto file = readBookFile(path);
        if (!file) return false;
        readerOf(path)(*file, [&](const FriendEntry& entry) { friends.add(entry); });
        return friends.endFile();
    } catch (const std::system_error&) {
        return false;
    }
}

std::error_code writeLines(const std::string& lines, const std::filesystem::path& tempFile)
{
    try {
        TempFile temp(tempFile);
        temp.write(lines);
        temp.commit();
        return {};
    } catch (const std::system_error& failure) {
        return failure.code();
    }
}

Conversion writeFriends(const std::filesystem::path& folder, const std::filesystem::path& tempFile)
{
    Friends friends;
    bool whole = true;
    for (const std::filesystem::path& name : bookNames(folder))
        whole = readFile(folder / name, friends) && whole;
    // An empty book must not replace the Friend.Tmp of an earlier one.
    if (friends.count() > 0)
        if (const std::error_code failure = writeLines(friends.lines(), tempFile))
            return {.status = ConversionStatus::Failed, .failure = failure};
    return {whole ? ConversionStatus::Converted : ConversionStatus::Incomplete,
            static_cast<std::int16_t>(friends.count())};
}

}

Conversion convertFriendBook(const std::filesystem::path& folder,
                             const std::filesystem::path& tempFile)
{
    try {
        if (!folderExists(folder)) return {ConversionStatus::Unreadable, 0};
        return writeFriends(folder, tempFile);
    } catch (const std::system_error&) {
        return {ConversionStatus::Failed, 0};
    }
}

}
