// Comparison and search, by code unit and in text mode.
#include "platform/runtime/kana.h"
#include "platform/runtime/runtime_error.h"

#include <array>
#include <bit>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace tolvek {

namespace {

using FoldTable = std::array<char16_t, 0x10000>;

// Removes the width of U+3000 and U+FF01 to U+FFEE, except for half-width kana,
// which may combine with the next character.
char16_t withoutWidth(char16_t c, const icu::Normalizer2& nfkc)
{
    if (c != u'\u3000' && (c < u'\uFF01' || c > u'\uFFEE')) return c;
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString narrow = nfkc.normalize(icu::UnicodeString(UChar32{c}), status);
    return U_SUCCESS(status) && narrow.length() == 1 ? narrow[0] : c;
}

char16_t withoutKanaType(char16_t c)
{
    const bool hiragana = (c >= u'\u3041' && c <= u'\u3096') || c == u'\u309D' || c == u'\u309E';
    return hiragana ? static_cast<char16_t>(c + 0x60) : c;
}

// Covers all code units, so that a search makes no ICU call for each character.
FoldTable makeFoldTable()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* nfkc = icu::Normalizer2::getNFKCInstance(status);
    if (U_FAILURE(status)) throw RuntimeError(5, u"ICU のデータが見つかりません。", nullptr);
    FoldTable table;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const auto c = static_cast<char16_t>(i);
        const UChar32 plain = isNarrowKana(c) ? c : withoutKanaType(withoutWidth(c, *nfkc));
        table[i] = static_cast<char16_t>(u_foldCase(plain, U_FOLD_CASE_DEFAULT));
    }
    return table;
}

const FoldTable& foldTable()
{
    static const FoldTable table = makeFoldTable();
    return table;
}

// Yields one folded character at a time; a half-width kana and its mark count as
// one.
class Folded {
public:
    explicit Folded(TextView text, std::size_t at = 0) : text_(text), at_(at) {}
    bool atEnd() const { return at_ >= text_.size(); }
    std::size_t at() const { return at_; }
    char16_t next()
    {
        return table_[isNarrowKana(text_[at_]) ? takeWideKana(text_, at_) : text_[at_++]];
    }

private:
    const FoldTable& table_ = foldTable();
    TextView text_;
    std::size_t at_;
};

Text foldedText(TextView text)
{
    Text folded;
    folded.reserve(text.size());
    for (Folded reader(text); !reader.atEnd();)
        folded += reader.next();
    return folded;
}

int compareFolded(TextView a, TextView b)
{
    Folded readerA(a), readerB(b);
    while (!readerA.atEnd() && !readerB.atEnd()) {
        const int difference = readerA.next() - readerB.next();
        if (difference != 0) return difference;
    }
    // The text that ended first is the smaller one.
    return static_cast<int>(readerB.atEnd()) - static_cast<int>(readerA.atEnd());
}

bool continuesWith(Folded reader, TextView folded)
{
    for (const char16_t c : folded)
        if (reader.atEnd() || reader.next() != c) return false;
    return true;
}

// A match must begin where a character of the original begins, so that no mark is
// separated from its kana.
std::size_t findFolded(TextView text, TextView what, std::size_t from)
{
    const Text folded = foldedText(what);
    for (Folded reader(text, from); !reader.atEnd();) {
        const std::size_t at = reader.at();
        if (reader.next() == folded[0] && continuesWith(reader, TextView(folded).substr(1)))
            return at;
    }
    return text.npos;
}

std::size_t searchStart(int start)
{
    if (start < 1) throw RuntimeError(5);
    return static_cast<std::size_t>(start) - 1;
}

int foundPosition(std::size_t index)
{
    return index == TextView::npos ? 0 : static_cast<int>(index) + 1;
}

// The byte search works on the code units as they are in memory.
static_assert(std::endian::native == std::endian::little);

std::string_view bytesOf(TextView text)
{
    return {reinterpret_cast<const char*>(text.data()), 2 * text.size()};
}

}

int inStr(TextView text, TextView what, Compare mode, int start)
{
    const std::size_t from = searchStart(start);
    // findFolded needs a first character, so an empty `what` is left to find().
    if (mode == Compare::Binary || what.empty()) return foundPosition(text.find(what, from));
    return foundPosition(findFolded(text, what, from));
}

int inStrB(TextView text, TextView what, int startByte)
{
    return foundPosition(bytesOf(text).find(bytesOf(what), searchStart(startByte)));
}

int compareText(TextView a, TextView b, Compare mode)
{
    return mode == Compare::Binary ? a.compare(b) : compareFolded(a, b);
}

}
