// What the user typed, parsed.
//
//     旅行 "星の観察" -宣伝 from:はな to:taro@example.com year:2001 year:1999-2000
//     差出人:はな　宛先:たろう　年:２００１
//
// Words are separated by blanks, half or full width; all of them must occur in subject,
// names, addresses or text. A quotation mark keeps blanks ("…", “…”, 「」 isn't one); a
// leading - excludes. from:/差出人:, to:/宛先: look at one side's name and address (and
// the friend book's name for it); year:/年: takes a year, a month as yyyymm or yyyy/mm, or
// a range with -. The colon may be full width. Everything else is a word: no input is
// an error. A mark without a word after it (from:, -, ") is ignored while it is typed.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tolvek {

enum class TermField { Anywhere, From, To };

struct Term {
    Text written; // as typed, without quotation marks
    Text folded;  // what is compared: written itself if exact
    TermField field = TermField::Anywhere;
    bool excluded = false;
};

// Both ends included, as yyyymm.
struct Months {
    int first = 0, last = 999999;
    bool contains(int month) const { return first <= month && month <= last; }
};

struct LetterQuery {
    std::vector<Term> terms;
    std::vector<Months> years;         // any of them; empty: all
    std::vector<Months> excludedYears; // none of them
    bool exact = false;                // case, width, kana and old kanji forms count
    bool isEmpty() const { return terms.empty() && years.empty() && excludedYears.empty(); }
};

LetterQuery parseQuery(TextView typed, bool exact = false);

// A stretch of UTF-16 units, counted from 0.
struct Span {
    std::size_t begin = 0, length = 0;
    bool operator==(const Span&) const = default;
};

// Where the query's words occur in a text as stored: sorted, not overlapping. Excluded
// words are never marked. `field` leaves out words that were asked of another field
// (Anywhere: subject and text, where only words without a field are marked).
std::vector<Span> hitsIn(TextView text, const LetterQuery& query,
                         TermField field = TermField::Anywhere);

// The line of the text that the list shows: the first with a hit, or the first that isn't
// blank. Without line ends; the marks count in `line`. At most `limit` units, cut so that
// the first hit is inside.
struct MatchedLine {
    Text line;
    std::vector<Span> marks;
};
MatchedLine matchedLine(TextView text, const LetterQuery& query, std::size_t limit = 120);

}
