#include "converter/csv_book.h"

#include "converter/charset_guess.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <algorithm>
#include <vector>

namespace tolvek {

namespace {

constexpr std::size_t kFields = 5;
constexpr std::size_t kLongestRecord = 1 << 15; // characters, with line ends inside

bool isLineEnd(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

class CsvRecords {
public:
    explicit CsvRecords(TextView text) : text_(text) {}

    // False at the end of the text. A broken record has no fields.
    bool next()
    {
        fields_.clear();
        if (at_ >= text_.size()) return false;
        const std::size_t begin = at_;
        // After a broken record only its first line is skipped, so one missing quote
        // costs one line; the length limit keeps the search for it linear.
        if (record(begin + kLongestRecord)) return true;
        fields_.clear();
        at_ = begin;
        skipLine();
        return true;
    }
    const std::vector<Text>& fields() const { return fields_; }

private:
    bool ended() const { return at_ >= text_.size() || isLineEnd(text_[at_]); }
    bool isNext(char16_t unit) const { return at_ < text_.size() && text_[at_] == unit; }

    bool record(std::size_t limit)
    {
        for (;;) {
            skipBlanks();
            if (isNext(u'"') ? !quotedField(limit) : !plainField(limit)) return false;
            if (ended()) break;
            ++at_;
        }
        skipLineEnd();
        return true;
    }

    bool plainField(std::size_t limit)
    {
        const std::size_t begin = at_;
        while (!ended() && text_[at_] != u',')
            ++at_;
        keep(Text(text_.substr(begin, at_ - begin)));
        return at_ <= limit;
    }

    bool quotedField(std::size_t limit)
    {
        Text field;
        for (++at_; at_ < text_.size() && at_ < limit; ++at_) {
            const bool quote = text_[at_] == u'"';
            if (quote && !(at_ + 1 < text_.size() && text_[at_ + 1] == u'"'))
                return closed(std::move(field));
            // A doubled quote stands for one.
            if (quote) ++at_;
            field += text_[at_];
        }
        return false;
    }

    bool closed(Text field)
    {
        ++at_;
        skipBlanks();
        keep(std::move(field));
        return ended() || text_[at_] == u',';
    }

    // Empty fields after the fifth are commas that a spreadsheet added. The first one
    // with a value is kept, so that the record is refused.
    void keep(Text field)
    {
        const bool beyond = fields_.size() >= kFields;
        if (!beyond || (fields_.size() == kFields && !trim(field).empty()))
            fields_.push_back(std::move(field));
    }

    void skipBlanks()
    {
        while (isNext(u' ') || isNext(u'\t'))
            ++at_;
    }
    void skipLineEnd()
    {
        if (isNext(u'\r')) ++at_;
        if (isNext(u'\n')) ++at_;
    }
    void skipLine()
    {
        while (!ended())
            ++at_;
        skipLineEnd();
    }

    TextView text_;
    std::size_t at_ = 0;
    std::vector<Text> fields_;
};

int mailsOf(TextView number)
{
    try {
        return toInt16(number);
    } catch (const RuntimeError&) {
        return 0; // a number, but beyond the count's 16 bits
    }
}

void handOn(std::vector<Text> fields, const FriendSink& sink)
{
    // A broken record has no fields; one with more isn't this form.
    if (fields.empty() || fields.size() > kFields) return;
    fields.resize(kFields);
    const Text count = trim(fields[4]);
    // A heading line has text in this column.
    if (!count.empty() && !isNumeric(count)) return;
    sink({trim(fields[0]), fields[1], fields[2], fields[3], count.empty() ? 0 : mailsOf(count)});
}

}

void readCsvBook(const BookFile& file, const FriendSink& sink)
{
    const bool utf8 = file.utf8 || isMostlyUtf8(file.bytes);
    const Text text = utf8 ? fromUtf8(file.bytes) : fromAnsi(file.bytes);
    CsvRecords records(text);
    while (records.next())
        handOn(records.fields(), sink);
}

}
