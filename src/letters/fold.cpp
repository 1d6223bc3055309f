#include "letters/fold.h"

#include "letters/old_kanji.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <stdexcept>

namespace tolvek {

namespace {

// What the table says instead of a folded unit. No text folds to a lone surrogate.
constexpr char16_t kCluster = 0xD800; // several units, or one that becomes several
constexpr char16_t kBlank = 0xD801;
constexpr char16_t kMark = 0xD802; // joins the character before it

constexpr char16_t kVoiced = 0x3099, kSemiVoiced = 0x309A; // as combining marks

const icu::Normalizer2& normalizer()
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFKCCasefoldInstance(status);
    if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
    return *form;
}

bool isAmong(char16_t c, TextView all)
{
    return all.find(c) != TextView::npos;
}

// What normalisation leaves apart, but a reader doesn't. The store has ’ for every single
// quote.
char16_t plainSign(char16_t c)
{
    if (isAmong(c, u"‘’‛′")) return u'\'';
    if (isAmong(c, u"“”„″")) return u'"';
    if (isAmong(c, u"‐‑‒–—―−")) return u'-';
    if (c == 0x301C) return u'~'; // 〜, beside ～
    if (c == 0x00A5) return u'\\';
    return c;
}

char16_t hiragana(char16_t c)
{
    const bool isKatakana = (c >= 0x30A1 && c <= 0x30F6) || c == 0x30FD || c == 0x30FE;
    return isKatakana ? static_cast<char16_t>(c - 0x60) : c;
}

class Table {
public:
    Table() : units_(0x10000)
    {
        for (unsigned c = 0; c < units_.size(); ++c)
            kanji_.push_back(static_cast<char16_t>(c));
        for (const char16_t* pair = kOldKanji; *pair != 0; pair += 2)
            kanji_[pair[0]] = pair[1];
        for (unsigned c = 0; c < units_.size(); ++c)
            units_[c] = entry(static_cast<char16_t>(c));
    }
    char16_t operator[](char16_t c) const { return units_[c]; }
    // After normalisation.
    char16_t finished(char16_t c) const { return kanji_[hiragana(plainSign(c))]; }

private:
    static bool isUnchanged(char16_t c)
    {
        return (c >= 0x4E00 && c <= 0x9FFF) || (c >= 0xAC00 && c <= 0xD7A3) ||
               (c >= 0xE000 && c <= 0xF8FF);
    }
    char16_t entry(char16_t c) const
    {
        if (isUnchanged(c)) return finished(c); // nearly half of all; saves the look-up
        if (U16_IS_SURROGATE(c)) return kCluster;
        if (u_isUWhiteSpace(c)) return kBlank;
        if (isAmong(c, u"゛゜\uFF9E\uFF9F") || !form_.hasBoundaryBefore(c)) return kMark;
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString out = form_.normalize(icu::UnicodeString(c), status);
        return U_SUCCESS(status) && out.length() == 1 ? finished(out[0]) : kCluster;
    }

    const icu::Normalizer2& form_ = normalizer();
    std::vector<char16_t> units_, kanji_;
};

const Table& table()
{
    static const Table made;
    return made;
}

// 𠮷, the one character beyond 16 bits that people type in names.
constexpr UChar32 kTypedYoshi = 0x20BB7;
constexpr char16_t kYoshi = u'吉';

Text foldedCluster(TextView source)
{
    icu::UnicodeString text(source.data(), static_cast<int>(source.size()));
    text.findAndReplace(icu::UnicodeString(kTypedYoshi), icu::UnicodeString(kYoshi));
    if (text.length() > 1) {
        text.findAndReplace(icu::UnicodeString(u'゛'), icu::UnicodeString(kVoiced));
        text.findAndReplace(icu::UnicodeString(u'゜'), icu::UnicodeString(kSemiVoiced));
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString out = normalizer().normalize(text, status);
    if (U_FAILURE(status)) return Text(source);
    Text result;
    for (int at = 0; at < out.length(); ++at)
        result += table().finished(out[at]);
    return result;
}

// Scripts that are written without blanks, with their signs.
bool joinsAcrossLines(char16_t c)
{
    return c >= 0x2E80 && !U16_IS_SURROGATE(c) && !(c >= 0xAC00 && c <= 0xD7A3);
}

class PlainSink {
public:
    explicit PlainSink(Text& to) : to_(to) {}
    void put(char16_t c, std::size_t, std::size_t) { to_ += c; }
    std::size_t size() const { return to_.size(); }
    void cut(std::size_t size) { to_.resize(size); }

private:
    Text& to_;
};

class OriginSink {
public:
    explicit OriginSink(FoldedText& to) : to_(to) {}
    void put(char16_t c, std::size_t begin, std::size_t end)
    {
        to_.text += c;
        to_.begin.push_back(static_cast<std::uint32_t>(begin));
        to_.end.push_back(static_cast<std::uint32_t>(end));
    }
    std::size_t size() const { return to_.text.size(); }
    void cut(std::size_t size)
    {
        to_.text.resize(size);
        to_.begin.resize(size);
        to_.end.resize(size);
    }

private:
    FoldedText& to_;
};

template <class Sink> class Folding {
public:
    Folding(TextView text, Sink sink) : text_(text), sink_(sink), start_(sink_.size()) {}

    void run()
    {
        const Table& forms = table();
        while (at_ < text_.size()) {
            const char16_t form = forms[text_[at_]];
            if (form == kBlank)
                takeBlanks();
            else if (form == kCluster || form == kMark)
                takeCluster(form == kMark);
            else
                takeUnit(form);
        }
    }

private:
    void takeUnit(char16_t form)
    {
        clusterBegin_ = at_;
        clusterOut_ = sink_.size();
        sink_.put(form, at_, at_ + 1);
        ++at_;
    }

    // A mark is folded together with the character before it, which is taken back.
    void takeCluster(bool isMark)
    {
        const bool joins = isMark && at_ > 0 && table()[text_[at_ - 1]] != kBlank;
        const std::size_t begin = joins ? clusterBegin_ : at_;
        if (joins)
            sink_.cut(clusterOut_);
        else
            clusterOut_ = sink_.size();
        if (!joins && U16_IS_LEAD(text_[at_]) && at_ + 1 < text_.size()) ++at_;
        ++at_;
        while (at_ < text_.size() && table()[text_[at_]] == kMark)
            ++at_;
        clusterBegin_ = begin;
        for (const char16_t c : foldedCluster(text_.substr(begin, at_ - begin)))
            sink_.put(c, begin, at_);
    }

    void takeBlanks()
    {
        const std::size_t begin = at_;
        while (at_ < text_.size() && table()[text_[at_]] == kBlank)
            ++at_;
        const bool isOutside = sink_.size() == start_ || at_ == text_.size();
        if (!isOutside && !isInsideWord(begin)) sink_.put(u' ', begin, at_);
    }

    bool isInsideWord(std::size_t begin) const
    {
        const TextView blanks = text_.substr(begin, at_ - begin);
        const bool isLineEnd = blanks == u"\r\n" || blanks == u"\n" || blanks == u"\r";
        return isLineEnd && joinsAcrossLines(text_[begin - 1]) && joinsAcrossLines(text_[at_]);
    }

    TextView text_;
    Sink sink_;
    std::size_t start_;
    std::size_t at_ = 0;
    std::size_t clusterBegin_ = 0, clusterOut_ = 0; // of the character before `at_`
};

}

void appendFolded(Text& to, TextView text)
{
    Folding(text, PlainSink(to)).run();
}

Text folded(TextView text)
{
    Text to;
    to.reserve(text.size());
    appendFolded(to, text);
    return to;
}

FoldedText foldedWithOrigin(TextView text)
{
    FoldedText to;
    Folding(text, OriginSink(to)).run();
    return to;
}

}
