#include "letters/letter_cache.h"

#include "letters/unfinished_file.h"
#include "platform/system/files.h"
#include "platform/system/mapped_file.h"

#include <cstring>
#include <system_error>

namespace tolvek {

namespace {

constexpr const char* kExtension = ".letters";
constexpr std::uint64_t kMagic = 0x3172'7474'656C'7654; // "Tvlettr1"; changes with the form
constexpr std::size_t kAlignment = 8;

// At the end of the file; positions in bytes from its beginning, where the units are.
struct Trailer {
    std::uint64_t units = 0; // their number
    std::uint64_t rows = 0, rowsAt = 0;
    std::uint64_t friendUnits = 0, friendsAt = 0;
    std::uint64_t keyBytes = 0, keyAt = 0;
    std::uint64_t checksum = 0; // of everything from rowsAt to the trailer
    std::uint64_t magic = kMagic;
};

std::uint64_t checksumOf(std::string_view bytes)
{
    std::uint64_t value = 0xCBF29CE484222325;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), 8);
        value = (value ^ word) * 0x100000001B3;
        value ^= value >> 29;
    }
    for (const char c : bytes)
        value = (value ^ static_cast<unsigned char>(c)) * 0x100000001B3;
    return value;
}

std::string stampText(const std::filesystem::path& path)
{
    if (!fileExists(path)) return "-";
    const FileStamp stamp = fileStamp(path);
    return std::to_string(stamp.device) + ' ' + std::to_string(stamp.file) + ' ' +
           std::to_string(stamp.size) + ' ' + std::to_string(stamp.changed);
}

// The path is its first line.
std::string keyOf(const std::filesystem::path& archive)
{
    std::string key = archive.string() + '\n';
    for (const char* suffix : {"", "-wal", "-journal"})
        key += stampText(archive.string() + suffix) + '\n';
    return key;
}

template <class Item> std::string_view bytesOf(const Item* items, std::size_t count)
{
    return {reinterpret_cast<const char*>(items), count * sizeof(Item)};
}

Text friendsText(const std::vector<BookFriend>& friends)
{
    Text all;
    for (const BookFriend& entry : friends)
        all += entry.address + u'\0' + entry.name + u'\0';
    return all;
}

std::vector<BookFriend> friendsIn(TextView all)
{
    std::vector<Text> texts;
    for (std::size_t end; (end = all.find(u'\0')) != TextView::npos; all.remove_prefix(end + 1))
        texts.emplace_back(all.substr(0, end));
    std::vector<BookFriend> friends;
    for (std::size_t at = 0; at + 1 < texts.size(); at += 2)
        friends.push_back({texts[at], texts[at + 1]});
    return friends;
}

// Whether the parts follow each other as they were written.
bool isInOrder(const Trailer& trailer, std::uint64_t size)
{
    const std::uint64_t most = size; // no number of anything is larger, so nothing overflows
    for (const std::uint64_t number :
         {trailer.units, trailer.rows, trailer.friendUnits, trailer.keyBytes, trailer.rowsAt,
          trailer.friendsAt, trailer.keyAt})
        if (number > most) return false;
    return trailer.units * 2 <= trailer.rowsAt && trailer.rowsAt % kAlignment == 0 &&
           trailer.friendsAt == trailer.rowsAt + trailer.rows * sizeof(LetterRow) &&
           trailer.keyAt == trailer.friendsAt + trailer.friendUnits * 2 &&
           trailer.keyAt + trailer.keyBytes + sizeof(Trailer) == size;
}

// False for a file that isn't complete or was changed.
bool readTrailer(std::string_view bytes, Trailer& trailer)
{
    if (bytes.size() < sizeof(Trailer)) return false;
    std::memcpy(&trailer, bytes.data() + bytes.size() - sizeof(Trailer), sizeof(Trailer));
    if (trailer.magic != kMagic || !isInOrder(trailer, bytes.size())) return false;
    const std::string_view checked =
        bytes.substr(trailer.rowsAt, bytes.size() - sizeof(Trailer) - trailer.rowsAt);
    return checksumOf(checked) == trailer.checksum;
}

bool isInside(const LetterRow& row, std::uint64_t units)
{
    std::uint64_t original = row.original, folded = row.folded;
    if (original > units || folded > units) return false;
    for (const std::uint32_t length : row.lengths)
        original += length;
    for (const std::uint32_t length : row.foldedLengths)
        folded += length + std::uint64_t{1};
    return original <= units && folded <= units;
}

std::string hexOf(std::uint64_t number)
{
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += kDigits[number >> shift & 0xF];
    return text;
}

// Throws std::system_error for a file that can't be read.
std::string keyIn(const std::filesystem::path& file)
{
    const MappedFile mapped(file);
    Trailer trailer;
    if (!readTrailer(mapped.bytes(), trailer)) return {};
    return std::string(mapped.bytes().substr(trailer.keyAt, trailer.keyBytes));
}

}

LetterCache::LetterCache(std::filesystem::path folder) : folder_(std::move(folder))
{
    if (folderExists(folder_)) return;
    std::filesystem::create_directories(folder_);
    std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
}

std::filesystem::path LetterCache::fileOf(const std::filesystem::path& archive) const
{
    return folder_ / (hexOf(checksumOf(archive.string())) + kExtension);
}

std::shared_ptr<const LetterFile> LetterCache::find(const std::filesystem::path& archive) const
{
    const std::filesystem::path path = fileOf(archive);
    if (!fileExists(path)) return nullptr;
    auto file = std::make_shared<LetterFile>();
    file->mapped_ = std::make_unique<MappedFile>(path);
    const std::string_view bytes = file->mapped_->bytes();
    Trailer trailer;
    if (!readTrailer(bytes, trailer)) return nullptr;
    if (bytes.substr(trailer.keyAt, trailer.keyBytes) != keyOf(archive)) return nullptr;
    file->units_ = {reinterpret_cast<const char16_t*>(bytes.data()), trailer.units};
    file->rows_ = {reinterpret_cast<const LetterRow*>(bytes.data() + trailer.rowsAt), trailer.rows};
    for (const LetterRow& row : file->rows_)
        if (!isInside(row, trailer.units)) return nullptr;
    file->friends_ = friendsIn(
        {reinterpret_cast<const char16_t*>(bytes.data() + trailer.friendsAt), trailer.friendUnits});
    return file;
}

std::shared_ptr<const LetterFile> LetterCache::make(const std::filesystem::path& archive,
                                                    const Fill& fill) const
{
    const std::string key = keyOf(archive);
    UnfinishedFile target(fileOf(archive));
    OpenFile out(target.path(), OpenFile::Mode::Anew);
    LetterFileWriter writer(out);
    if (!fill(writer)) return nullptr;
    writer.flush();
    Trailer trailer;
    trailer.units = writer.stored_;
    const std::uint64_t unitBytes = trailer.units * 2;
    const std::size_t gap = (kAlignment - unitBytes % kAlignment) % kAlignment;
    const LetterFile& letters = *writer.file_;
    const Text friends = friendsText(letters.friends_);
    trailer.rows = letters.ownRows_.size();
    trailer.rowsAt = unitBytes + gap;
    trailer.friendUnits = friends.size();
    trailer.friendsAt = trailer.rowsAt + trailer.rows * sizeof(LetterRow);
    trailer.keyBytes = key.size();
    trailer.keyAt = trailer.friendsAt + friends.size() * 2;
    std::string rest(bytesOf(letters.ownRows_.data(), letters.ownRows_.size()));
    rest.append(bytesOf(friends.data(), friends.size())).append(key);
    trailer.checksum = checksumOf(rest);
    out.write(std::string(gap, '\0') + rest + std::string(bytesOf(&trailer, 1)));
    out.close();
    target.finish();
    // The archive may have changed while it was read; then this file is for nobody.
    return find(archive);
}

void LetterCache::removeOrphans() const
{
    for (const std::string& name : fileNames(folder_)) {
        if (!name.ends_with(kExtension)) continue;
        try {
            const std::string key = keyIn(folder_ / name);
            if (!entryExists(key.substr(0, key.find('\n')))) removeFile(folder_ / name);
        } catch (const std::system_error&) {
            // It can't be read or removed now.
        }
    }
}

}
