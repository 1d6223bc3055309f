#include "letters/letter_file.h"

#include "letters/fold.h"
#include "letters/subject_line.h"
#include "platform/system/files.h"
#include "platform/system/mapped_file.h"

#include <numeric>

namespace tolvek {

namespace {

// Originals and folded texts lie in stretches of about this size, so that a search passes
// over few bytes that it doesn't read.
constexpr std::size_t kStretch = 1 << 18; // units
constexpr std::int64_t kMostSeconds = 1'000'000;

// A hash that is the same in every run (FNV-1a, 64 bits).
class Hash {
public:
    Hash& add(TextView text)
    {
        for (const char16_t c : text)
            mix(c);
        mix(0xFFFF);
        return *this;
    }
    std::uint64_t value() const { return value_; }

private:
    void mix(char16_t c)
    {
        for (const unsigned byte : {c & 0xFFu, static_cast<unsigned>(c) >> 8}) {
            value_ ^= byte;
            value_ *= 0x100000001B3;
        }
    }
    std::uint64_t value_ = 0xCBF29CE484222325;
};

// Digits only; others don't count. Beyond any date the rest is left out.
std::int64_t numberOf(TextView digits)
{
    std::int64_t number = 0;
    for (const char16_t c : digits)
        if (c >= u'0' && c <= u'9' && number < 1'000'000'000) number = number * 10 + (c - u'0');
    return number;
}

// As the store compares: without case and trailing blanks.
Text compared(TextView text)
{
    while (text.ends_with(u' '))
        text.remove_suffix(1);
    return lowerCase(text);
}

std::uint64_t identityOf(const LetterTexts& letter)
{
    const auto& fields = letter.fields;
    return Hash()
        .add(fields[kDate])
        .add(fields[kTime])
        .add(compared(fields[kSenderAddress]))
        .add(compared(fields[kReceiverAddress]))
        .add(compared(fields[kSubject]))
        .value();
}

template <class Lengths> std::size_t sum(const Lengths& lengths, std::size_t count)
{
    return std::accumulate(lengths.begin(), lengths.begin() + static_cast<std::ptrdiff_t>(count),
                           std::size_t{0});
}

}

int LetterRow::month() const
{
    return static_cast<int>(order / kMostSeconds / 100);
}

LetterFile::LetterFile() = default;
LetterFile::~LetterFile() = default;

TextView LetterFile::field(const LetterRow& row, LetterField field) const
{
    return units_.substr(row.original + sum(row.lengths, field), row.lengths[field]);
}

// The parts are next to each other; each is followed by a U+0000, which doesn't count here.
TextView LetterFile::folded(const LetterRow& row, FoldedPart part) const
{
    const auto between = [&](std::size_t first, std::size_t last) {
        const std::size_t begin = sum(row.foldedLengths, first) + first;
        const std::size_t end = sum(row.foldedLengths, last + 1) + last;
        return units_.substr(row.folded + begin, end - begin);
    };
    switch (part) {
    case FoldedPart::Sender:
        return between(kSenderName - kSubject, kSenderAddress - kSubject);
    case FoldedPart::Receiver:
        return between(kReceiverName - kSubject, kReceiverAddress - kSubject);
    case FoldedPart::All:
        break;
    }
    return between(0, kFoldedFields - 1);
}

void LetterFile::release() const
{
    if (mapped_) mapped_->release();
}

LetterFileWriter::LetterFileWriter(std::size_t expected) : file_(std::make_shared<LetterFile>())
{
    file_->ownUnits_.reserve(expected);
}

LetterFileWriter::LetterFileWriter(OpenFile& cache)
    : cache_(&cache), file_(std::make_shared<LetterFile>())
{
}

LetterFileWriter::~LetterFileWriter() = default;

void LetterFileWriter::add(const LetterTexts& letter)
{
    if (originals_.size() >= kStretch) flush();
    LetterRow row;
    row.original = originals_.size();
    row.folded = foldeds_.size();
    for (std::size_t field = 0; field < kLetterFields; ++field) {
        originals_ += letter.fields[field];
        row.lengths[field] = static_cast<std::uint32_t>(letter.fields[field].size());
    }
    for (std::size_t field = kSubject; field < kLetterFields; ++field) {
        const std::size_t begin = foldeds_.size();
        appendFolded(foldeds_, letter.fields[field]);
        row.foldedLengths[field - kSubject] = static_cast<std::uint32_t>(foldeds_.size() - begin);
        foldeds_ += u'\0';
    }
    row.identity = identityOf(letter);
    row.conversation = Hash().add(conversationSubject(letter.fields[kSubject])).value();
    row.order = numberOf(letter.fields[kDate]) * kMostSeconds +
                numberOf(letter.fields[kTime]) % kMostSeconds;
    row.subKey = letter.subKey;
    row.parts = static_cast<std::uint16_t>(letter.parts);
    row.sent = letter.sent ? 1 : 0;
    file_->ownRows_.push_back(row);
}

void LetterFileWriter::addFriend(const Text& address, const Text& name)
{
    file_->friends_.push_back({address, name});
}

void LetterFileWriter::flush()
{
    auto& rows = file_->ownRows_;
    for (; firstPending_ < rows.size(); ++firstPending_) {
        rows[firstPending_].original += stored_;
        rows[firstPending_].folded += stored_ + originals_.size();
    }
    store(originals_);
    store(foldeds_);
    originals_.clear();
    foldeds_.clear();
}

void LetterFileWriter::store(TextView units)
{
    stored_ += units.size();
    if (cache_)
        cache_->write({reinterpret_cast<const char*>(units.data()), units.size() * 2});
    else
        file_->ownUnits_ += units;
}

std::shared_ptr<const LetterFile> LetterFileWriter::finish()
{
    flush();
    file_->rows_ = file_->ownRows_;
    file_->units_ = file_->ownUnits_;
    return file_;
}

}
