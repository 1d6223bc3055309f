#include "letters/query.h"

#include "letters/find_text.h"
#include "letters/fold.h"

#include <algorithm>
#include <array>

namespace tolvek {

namespace {

constexpr TextView kSpaces = u" \u3000\t\r\n";
constexpr TextView kQuotes = u"\"“”＂";
constexpr TextView kMinus = u"-－−";
constexpr TextView kColons = u":：";

enum class Label { None, From, To, Year };

struct LabelName {
    TextView folded;
    Label label;
};

constexpr std::array<LabelName, 6> kLabels{{{u"from", Label::From},
                                            {u"to", Label::To},
                                            {u"year", Label::Year},
                                            {u"差出人", Label::From},
                                            {u"宛先", Label::To},
                                            {u"年", Label::Year}}};

bool isAmong(char16_t c, TextView all)
{
    return all.find(c) != TextView::npos;
}

// One piece between blanks, taken apart.
struct Piece {
    bool excluded = false;
    Label label = Label::None;
    Text value;   // without quotation marks
    Text written; // with the label
};

class Scanner {
public:
    explicit Scanner(TextView typed) : rest_(typed) {}

    bool next(Piece& piece)
    {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpaces), rest_.size()));
        if (rest_.empty()) return false;
        piece = {};
        piece.excluded = takeAny(kMinus);
        const TextView begin = rest_;
        piece.label = takeLabel();
        piece.value = takeAny(kQuotes) ? takeUpTo(kQuotes) : takeUpTo(kSpaces);
        piece.written = Text(begin.substr(0, begin.size() - rest_.size()));
        if (!rest_.empty()) rest_.remove_prefix(1);
        return true;
    }

private:
    bool takeAny(TextView marks)
    {
        if (rest_.empty() || !isAmong(rest_.front(), marks)) return false;
        rest_.remove_prefix(1);
        return true;
    }

    Label takeLabel()
    {
        const std::size_t colon = rest_.find_first_of(kColons);
        if (colon == TextView::npos) return Label::None;
        const Text name = folded(rest_.substr(0, colon));
        for (const LabelName& known : kLabels)
            if (name == known.folded) {
                rest_.remove_prefix(colon + 1);
                return known.label;
            }
        return Label::None;
    }

    // An end mark that is missing is still being typed.
    Text takeUpTo(TextView ends)
    {
        const std::size_t end = std::min(rest_.find_first_of(ends), rest_.size());
        Text taken(rest_.substr(0, end));
        rest_.remove_prefix(end);
        return taken;
    }

    TextView rest_;
};

struct Moment {
    int year = 0, month = 0; // month 0: the whole year
};

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

int numberOf(TextView digits)
{
    int number = 0;
    for (const char16_t c : digits.substr(0, 6))
        number = number * 10 + (c - u'0');
    return number;
}

// "2001", "200105", "2001/5", with 年 and 月 after the numbers.
std::optional<Moment> momentOf(TextView text)
{
    std::vector<TextView> numbers;
    while (!text.empty()) {
        std::size_t digits = 0;
        while (digits < text.size() && isDigit(text[digits]))
            ++digits;
        if (digits == 0) return std::nullopt;
        numbers.push_back(text.substr(0, digits));
        text.remove_prefix(digits);
        if (!text.empty() && !isAmong(text.front(), u"/.年月")) return std::nullopt;
        if (!text.empty()) text.remove_prefix(1);
    }
    if (numbers.empty() || numbers.size() > 2) return std::nullopt;
    if (numbers[0].size() == 6 && numbers.size() == 1)
        numbers = {numbers[0].substr(0, 4), numbers[0].substr(4)};
    if (numbers[0].size() != 4) return std::nullopt;
    Moment moment{numberOf(numbers[0]), numbers.size() == 2 ? numberOf(numbers[1]) : 0};
    if (moment.month > 12) return std::nullopt;
    return moment;
}

// A month may be 0 in the store, so a year begins there.
Months monthsBetween(const Moment& first, const Moment& last)
{
    return {first.year * 100 + first.month, last.year * 100 + (last.month ? last.month : 99)};
}

std::optional<Months> rangeOf(TextView text, std::size_t dash)
{
    const TextView left = text.substr(0, dash), right = text.substr(dash + 1);
    const auto first = momentOf(left), last = momentOf(right);
    if (first && last) return monthsBetween(*first, *last);
    if (first && right.empty()) return Months{first->year * 100 + first->month, 999999};
    if (last && left.empty()) return Months{0, monthsBetween(*last, *last).last};
    // 2001-05 is a month, 2001-2005 a range.
    if (first && first->month == 0 && right.size() <= 2) {
        const auto month = momentOf(Text(left) + u"/" + Text(right));
        if (month) return monthsBetween(*month, *month);
    }
    return std::nullopt;
}

std::optional<Months> monthsOf(TextView written)
{
    const Text text = folded(written);
    const std::size_t dash = text.find_first_of(u"-~");
    if (dash != Text::npos) return rangeOf(text, dash);
    const auto moment = momentOf(text);
    return moment ? std::optional(monthsBetween(*moment, *moment)) : std::nullopt;
}

bool isHalfTyped(TextView year)
{
    const Text text = folded(year);
    return text.size() < 4 && std::all_of(text.begin(), text.end(), isDigit);
}

TermField fieldOf(Label label)
{
    if (label == Label::From) return TermField::From;
    return label == Label::To ? TermField::To : TermField::Anywhere;
}

void addTerm(LetterQuery& query, const Piece& piece, Label label, const Text& written)
{
    Term term{written, query.exact ? written : folded(written), fieldOf(label), piece.excluded};
    if (!term.folded.empty()) query.terms.push_back(std::move(term));
}

void addPiece(LetterQuery& query, const Piece& piece)
{
    if (piece.label != Label::Year) return addTerm(query, piece, piece.label, piece.value);
    if (const auto months = monthsOf(piece.value))
        (piece.excluded ? query.excludedYears : query.years).push_back(*months);
    else if (!isHalfTyped(piece.value))
        addTerm(query, piece, Label::None, piece.written);
}

void addHits(std::vector<Span>& spans, TextView text, const Text& word)
{
    for (std::size_t at = findText(text, word); at != TextView::npos;
         at = findText(text, word, at + word.size()))
        spans.push_back({at, word.size()});
}

void unite(std::vector<Span>& spans)
{
    std::sort(spans.begin(), spans.end(),
              [](const Span& a, const Span& b) { return a.begin < b.begin; });
    std::vector<Span> united;
    for (const Span& span : spans) {
        if (united.empty() || united.back().begin + united.back().length <= span.begin) {
            united.push_back(span);
            continue;
        }
        Span& last = united.back();
        last.length = std::max(last.length, span.begin + span.length - last.begin);
    }
    spans = std::move(united);
}

bool isMarkedIn(const Term& term, TermField field)
{
    const bool fits = term.field == TermField::Anywhere || term.field == field;
    return fits && !term.excluded;
}

void mapBack(std::vector<Span>& spans, const FoldedText& form)
{
    for (Span& span : spans) {
        const std::size_t begin = form.begin[span.begin];
        span = {begin, form.end[span.begin + span.length - 1] - begin};
    }
}

bool isLineEnd(char16_t c)
{
    return c == u'\r' || c == u'\n';
}

// The line around a position, without its ends.
Span lineAt(TextView text, std::size_t at)
{
    std::size_t begin = at, end = at;
    while (begin > 0 && !isLineEnd(text[begin - 1]))
        --begin;
    while (end < text.size() && !isLineEnd(text[end]))
        ++end;
    return {begin, end - begin};
}

// Cuts a long line so that `hit` is inside, with a little before it.
Span shortened(TextView text, Span line, std::size_t hit, std::size_t limit)
{
    if (line.length <= limit) return line;
    const std::size_t before = std::min(hit - line.begin, limit / 4);
    std::size_t begin = hit - before;
    begin = std::min(begin, line.begin + line.length - limit);
    std::size_t end = begin + limit;
    // No half of a surrogate pair.
    if (begin > line.begin && (text[begin] & 0xFC00) == 0xDC00) ++begin;
    if (end < text.size() && (text[end] & 0xFC00) == 0xDC00) --end;
    return {begin, end - begin};
}

}

LetterQuery parseQuery(TextView typed, bool exact)
{
    LetterQuery query;
    query.exact = exact;
    Scanner scanner(typed);
    for (Piece piece; scanner.next(piece);)
        addPiece(query, piece);
    return query;
}

std::vector<Span> hitsIn(TextView text, const LetterQuery& query, TermField field)
{
    std::vector<Span> spans;
    const FoldedText form = query.exact ? FoldedText{} : foldedWithOrigin(text);
    const TextView searched = query.exact ? text : TextView(form.text);
    for (const Term& term : query.terms)
        if (isMarkedIn(term, field)) addHits(spans, searched, term.folded);
    if (!query.exact) mapBack(spans, form);
    unite(spans);
    return spans;
}

MatchedLine matchedLine(TextView text, const LetterQuery& query, std::size_t limit)
{
    const std::vector<Span> hits = hitsIn(text, query);
    const std::size_t inked = text.find_first_not_of(kSpaces);
    if (hits.empty() && inked == TextView::npos) return {};
    const std::size_t at = hits.empty() ? inked : hits.front().begin;
    const Span line = shortened(text, lineAt(text, at), at, limit);
    MatchedLine found{Text(text.substr(line.begin, line.length)), {}};
    for (const Span& hit : hits) {
        if (hit.begin < line.begin || hit.begin >= line.begin + line.length) continue;
        const std::size_t end = std::min(hit.begin + hit.length, line.begin + line.length);
        found.marks.push_back({hit.begin - line.begin, end - hit.begin});
    }
    return found;
}

}
