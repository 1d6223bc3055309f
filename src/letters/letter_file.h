// The letters of one archive file, as they were when it was read.
//
// Each letter is there twice: as stored, for display, and folded, for the search. Both lie
// in memory or in a mapped file of the cache folder. Never changes once it is made.
#pragma once
#include "letters/letter.h"

#include <array>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvek {

class MappedFile;
class UnfinishedFile;
class OpenFile;

enum LetterField : std::size_t {
    kDate,
    kTime,
    kSubject,
    kSenderName,
    kSenderAddress,
    kReceiverName,
    kReceiverAddress,
    kText,
    kLetterFields
};

// Which part of a letter's folded text is searched.
enum class FoldedPart { All, Sender, Receiver };

// The fields from kSubject on are folded, with a U+0000 between two of them.
inline constexpr std::size_t kFoldedFields = kLetterFields - kSubject;

// One letter without its texts. In the cache file it is stored as it is in memory.
struct LetterRow {
    std::uint64_t original = 0, folded = 0; // where its texts begin, in units
    std::uint64_t identity = 0;             // see Library: what makes two rows the same letter
    std::uint64_t conversation = 0;         // of its subject
    std::int64_t order = 0;                 // date and time as one number
    std::array<std::uint32_t, kLetterFields> lengths{};
    std::array<std::uint32_t, kFoldedFields> foldedLengths{};
    std::int32_t subKey = 0;
    std::uint16_t parts = 1;
    std::uint16_t sent = 0;
    std::uint32_t unused = 0;

    int month() const; // yyyymm
};

struct BookFriend {
    Text address, name;
};

class LetterFile {
public:
    std::span<const LetterRow> rows() const { return rows_; }
    TextView field(const LetterRow& row, LetterField field) const;
    TextView folded(const LetterRow& row, FoldedPart part) const;
    const std::vector<BookFriend>& friends() const { return friends_; }
    bool isMapped() const { return mapped_ != nullptr; }
    // Call after a search through a mapped file: its pages needn't stay in memory.
    void release() const;

    LetterFile();
    ~LetterFile();
    LetterFile(const LetterFile&) = delete;
    LetterFile& operator=(const LetterFile&) = delete;

private:
    friend class LetterFileWriter;
    friend class LetterCache;
    std::span<const LetterRow> rows_;
    TextView units_;
    std::vector<BookFriend> friends_;
    // What the two above refer to: these, or the mapped file.
    std::vector<LetterRow> ownRows_;
    Text ownUnits_;
    std::unique_ptr<MappedFile> mapped_;
};

// What a letter consists of, before it is in a file.
struct LetterTexts {
    std::array<TextView, kLetterFields> fields;
    int subKey = 0;
    int parts = 1;
    bool sent = false;
};

class LetterFileWriter {
public:
    // In memory; `expected` is the number of units for which room is made.
    explicit LetterFileWriter(std::size_t expected);
    // In a file, which the caller has opened; see letter_cache.h.
    explicit LetterFileWriter(OpenFile& cache);
    ~LetterFileWriter();
    LetterFileWriter(const LetterFileWriter&) = delete;
    LetterFileWriter& operator=(const LetterFileWriter&) = delete;

    void add(const LetterTexts& letter);
    void addFriend(const Text& address, const Text& name);
    // In memory only.
    std::shared_ptr<const LetterFile> finish();

private:
    friend class LetterCache;
    void flush();
    void store(TextView units);

    OpenFile* cache_ = nullptr;
    std::shared_ptr<LetterFile> file_;
    Text originals_, foldeds_; // not stored yet
    std::size_t firstPending_ = 0;
    std::uint64_t stored_ = 0;
};

}
