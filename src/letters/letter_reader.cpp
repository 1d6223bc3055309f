#include "letters/letter_reader.h"

#include "platform/dao/row_reader.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "store/long_mail.h"
#include "store/schema.h"

#include <map>
#include <set>
#include <system_error>
#include <tuple>

namespace tolvek {

namespace {

// Which row of a long mail follows another: date, time, addresses and subject.
using PartKey = std::tuple<Text, Text, Text, Text, Text>;

struct StoredRow {
    std::array<Text, kLetterFields> fields;
    int subKey = 0;
    bool sent = false;

    PartKey key() const
    {
        return {fields[kDate], fields[kTime], fields[kSenderAddress], fields[kReceiverAddress],
                withoutMark(fields[kSubject])};
    }
};

// None for a part whose date or time can't be counted on.
std::optional<PartKey> keyOfNext(const StoredRow& part)
{
    Text date = part.fields[kDate], time = part.fields[kTime];
    try {
        addSecond(date, time);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    PartKey next = part.key();
    std::get<0>(next) = date;
    std::get<1>(next) = time;
    return next;
}

// The headings in the order of LetterField, then the blocks of the text.
std::vector<Text> columnsOf(bool hasSubKey)
{
    std::vector<Text> columns{u"tblTolvek_YMD",     u"tblTolvek_HMS",       u"tblTolvek_Subject",
                              u"tblTolvek_SndName", u"tblTolvek_SndAdd",    u"tblTolvek_RcvName",
                              u"tblTolvek_RcvAdd",  u"tblTolvek_SndRcvFlag"};
    for (int block = 1; block <= kMailBlocks; ++block)
        columns.push_back(u"tblTolvek_Mail" + decimal(block));
    if (hasSubKey) columns.push_back(u"tblTolvek_SubKey");
    return columns;
}

constexpr int kFlagColumn = 8; // column 0 is the row's number
constexpr int kFirstBlock = kFlagColumn + 1;
constexpr int kSubKeyColumn = kFirstBlock + kMailBlocks;

class ArchiveReading {
public:
    ArchiveReading(const std::filesystem::path& archive, const ReadPause& pause)
        : reader_(archive), pause_(pause),
          hasSubKey_(reader_.hasColumn(kMails, u"tblTolvek_SubKey"))
    {
    }

    // False if it was ended.
    bool into(LetterFileWriter& writer)
    {
        if (!findParts() || !readRows(writer)) return false;
        joinParts(writer);
        return reader_.eachRow(
            u"tblFriend", {u"tblFriend_Address", u"tblFriend_Name"},
            [&](const Query& row) { writer.addFriend(row.text(1), row.text(2)); }, pause_);
    }

private:
    static constexpr TextView kMails = u"tblTolvek";

    // Which rows to expect as a further part. Only then are the texts read, so that none
    // but those of long mails has to wait for another.
    bool findParts()
    {
        const std::vector<Text> all = columnsOf(false);
        const std::vector<Text> headings(all.begin(), all.begin() + kText);
        return reader_.eachRow(
            kMails, headings,
            [&](const Query& row) {
                if (!isContinued(row.text(1 + kSubject))) return;
                StoredRow part;
                for (std::size_t field = 0; field < kText; ++field)
                    part.fields[field] = row.text(1 + static_cast<int>(field));
                if (const auto next = keyOfNext(part)) expected_.insert(*next);
            },
            pause_);
    }

    bool readRows(LetterFileWriter& writer)
    {
        return reader_.eachRow(
            kMails, columnsOf(hasSubKey_),
            [&](const Query& row) {
                read(row);
                const bool isPart = isContinued(row_.fields[kSubject]) ||
                                    (!expected_.empty() && expected_.contains(row_.key()));
                if (!isPart || !parts_.emplace(row_.key(), row_).second) add(writer, row_, 1);
            },
            pause_);
    }

    void read(const Query& row)
    {
        for (std::size_t field = 0; field < kText; ++field)
            row_.fields[field] = row.text(1 + static_cast<int>(field));
        Text& text = row_.fields[kText];
        text = row.text(kFirstBlock);
        for (int block = 1; block < kMailBlocks; ++block)
            text += row.text(kFirstBlock + block);
        row_.sent = row.number(kFlagColumn) != 0;
        row_.subKey = hasSubKey_ ? static_cast<int>(row.number(kSubKeyColumn)) : 0;
    }

    // A first part is one that follows no other.
    void joinParts(LetterFileWriter& writer)
    {
        std::set<PartKey> following;
        for (const auto& [key, part] : parts_)
            if (const auto next = nextOf(part)) following.insert(*next);
        for (const auto& [key, part] : parts_)
            if (!following.contains(key)) addChain(writer, part);
    }

    std::optional<PartKey> nextOf(const StoredRow& part) const
    {
        if (!isContinued(part.fields[kSubject])) return std::nullopt;
        const auto next = keyOfNext(part);
        return next && parts_.contains(*next) ? next : std::nullopt;
    }

    // A part whose next one is missing keeps the mark: the letter isn't complete.
    void addChain(LetterFileWriter& writer, const StoredRow& first)
    {
        StoredRow letter = first;
        const StoredRow* last = &first;
        int count = 1;
        for (auto next = nextOf(first); next; next = nextOf(*last), ++count) {
            last = &parts_.at(*next);
            letter.fields[kText] += last->fields[kText];
        }
        letter.fields[kSubject] = last->fields[kSubject];
        add(writer, letter, count);
    }

    static void add(LetterFileWriter& writer, const StoredRow& row, int parts)
    {
        LetterTexts letter;
        for (std::size_t field = 0; field < kLetterFields; ++field)
            letter.fields[field] = row.fields[field];
        letter.subKey = row.subKey;
        letter.sent = row.sent;
        letter.parts = parts;
        writer.add(letter);
    }

    RowReader reader_;
    const ReadPause& pause_;
    bool hasSubKey_;
    StoredRow row_; // kept for its memory
    std::set<PartKey> expected_;
    std::map<PartKey, StoredRow> parts_;
};

std::shared_ptr<const LetterFile> readIntoMemory(const std::filesystem::path& archive,
                                                 const ReadPause& pause)
{
    // Every text is there twice, and takes two bytes a unit as in the archive.
    LetterFileWriter writer(asFileError([&] { return fileStamp(archive).size; }));
    return ArchiveReading(archive, pause).into(writer) ? writer.finish() : nullptr;
}

// Null if the cache can't be used.
std::shared_ptr<const LetterFile> readIntoCache(const std::filesystem::path& archive,
                                                const LetterCache& cache, const ReadPause& pause,
                                                bool& ended)
{
    try {
        if (auto known = cache.find(archive)) return known;
        return cache.make(archive, [&](LetterFileWriter& writer) {
            ended = !ArchiveReading(archive, pause).into(writer);
            return !ended;
        });
    } catch (const std::system_error&) {
        // A full or read-only disk there must not keep anybody from the letters.
        return nullptr;
    }
}

}

std::shared_ptr<const LetterFile> readLetterFile(const std::filesystem::path& archive,
                                                 const LetterCache* cache, const ReadPause& pause)
{
    if (!fileExists(archive)) throw RuntimeError(3024, pathText(archive));
    bool ended = false;
    auto cached = cache ? readIntoCache(archive, *cache, pause, ended) : nullptr;
    return cached || ended ? cached : readIntoMemory(archive, pause);
}

}
