#include "letters/search.h"

#include "letters/find_text.h"
#include "letters/fold.h"
#include "letters/letter_file.h"

#include <algorithm>
#include <map>

namespace tolvek {

namespace {

// The search asks so often whether it has been cancelled.
constexpr std::size_t kBetweenLooks = 512;

// A term, with the people whose name in the friend book has it: their letters match even
// where they bear another name.
struct PreparedTerm {
    const Term* term;
    std::vector<bool> people;
};

bool isYearWanted(const LetterQuery& query, int month)
{
    const auto has = [&](const Months& months) { return months.contains(month); };
    if (std::any_of(query.excludedYears.begin(), query.excludedYears.end(), has)) return false;
    return query.years.empty() || std::any_of(query.years.begin(), query.years.end(), has);
}

class Matcher {
public:
    Matcher(const Library& library, const LetterQuery& query) : library_(library), query_(query)
    {
        for (const Term& term : query.terms)
            terms_.push_back({&term, friendsWith(term)});
        // The rarer a word, the sooner most letters are decided; long ones are rare.
        std::stable_sort(terms_.begin(), terms_.end(), [](const auto& a, const auto& b) {
            return a.term->folded.size() > b.term->folded.size();
        });
    }

    bool operator()(LetterId id) const
    {
        const Library::Place& place = library_.place(id);
        if (!isYearWanted(query_, place.month)) return false;
        const LetterFile& file = *library_.sources()[place.file].letters;
        const LetterRow& row = file.rows()[place.row];
        return std::all_of(terms_.begin(), terms_.end(), [&](const PreparedTerm& prepared) {
            return hasTerm(file, row, place, prepared) != prepared.term->excluded;
        });
    }

private:
    std::vector<bool> friendsWith(const Term& term) const
    {
        std::vector<bool> people;
        for (const Person& person : library_.people()) {
            const Text name = query_.exact ? person.name : folded(person.name);
            people.push_back(person.isFriend && findText(name, term.folded) != Text::npos);
        }
        return people;
    }

    bool hasTerm(const LetterFile& file, const LetterRow& row, const Library::Place& place,
                 const PreparedTerm& prepared) const
    {
        const TermField field = prepared.term->field;
        const bool isOtherSide =
            field == TermField::Anywhere || (field == TermField::To) == place.sent;
        if (isOtherSide && prepared.people[place.person]) return true;
        return query_.exact ? hasExactly(file, row, *prepared.term)
                            : findText(file.folded(row, partOf(field)), prepared.term->folded) !=
                                  TextView::npos;
    }

    static FoldedPart partOf(TermField field)
    {
        if (field == TermField::From) return FoldedPart::Sender;
        return field == TermField::To ? FoldedPart::Receiver : FoldedPart::All;
    }

    static bool hasExactly(const LetterFile& file, const LetterRow& row, const Term& term)
    {
        std::size_t first = kSubject, last = kText;
        if (term.field == TermField::From) first = kSenderName, last = kSenderAddress;
        if (term.field == TermField::To) first = kReceiverName, last = kReceiverAddress;
        for (std::size_t field = first; field <= last; ++field)
            if (findText(file.field(row, static_cast<LetterField>(field)), term.folded) !=
                TextView::npos)
                return true;
        return false;
    }

    const Library& library_;
    const LetterQuery& query_;
    std::vector<PreparedTerm> terms_;
};

// Asks now and then.
class Watch {
public:
    explicit Watch(const Cancelled& cancelled) : cancelled_(cancelled) {}
    bool isOver()
    {
        if (++count_ % kBetweenLooks != 0 || !cancelled_) return false;
        return cancelled_();
    }

private:
    const Cancelled& cancelled_;
    std::size_t count_ = 0;
};

// Whether every text with `next` has `before` too.
bool impliesTerm(const Term& next, const Term& before)
{
    if (next.excluded != before.excluded) return false;
    const bool sameField = next.field == before.field || before.field == TermField::Anywhere;
    if (!next.excluded) return sameField && findText(next.folded, before.folded) != Text::npos;
    return next.field == before.field && next.folded == before.folded;
}

bool isSame(const std::vector<Months>& a, const std::vector<Months>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Months& x, const Months& y) {
        return x.first == y.first && x.last == y.last;
    });
}

bool isIn(const Narrowing& narrowing, const Library& library, LetterId id)
{
    if (narrowing.conversation && library.conversationOf(id) != *narrowing.conversation)
        return false;
    return !narrowing.sent || library.isSent(id) == *narrowing.sent;
}

class Counts {
public:
    explicit Counts(const Library& library) : library_(library), people_(library.people().size()) {}
    void addMonth(LetterId id)
    {
        MonthCount& count = months_[library_.monthOf(id)];
        ++(library_.isSent(id) ? count.sent : count.received);
    }
    void addPerson(LetterId id) { ++people_[library_.personOf(id)]; }
    void into(Results& results) const
    {
        for (auto [month, count] : months_) {
            count.month = month;
            results.months.push_back(count);
        }
        for (PersonId person = 0; person < people_.size(); ++person)
            if (people_[person] > 0) results.people.push_back({person, people_[person]});
        std::stable_sort(results.people.begin(), results.people.end(),
                         [](const auto& a, const auto& b) { return a.letters > b.letters; });
    }

private:
    const Library& library_;
    std::map<int, MonthCount> months_;
    std::vector<std::size_t> people_;
};

// File by file, so that only one mapped file at a time takes memory.
template <class IsWanted>
std::vector<LetterId> search(const Library& library, const LetterQuery& query,
                             const IsWanted& isWanted, const Cancelled& cancelled)
{
    const Matcher matches(library, query);
    Watch watch(cancelled);
    std::vector<LetterId> found;
    for (std::size_t source = 0; source < library.sources().size(); ++source) {
        for (const LetterId id : library.idsOf(source)) {
            if (id != Library::kHidden && isWanted(id) && matches(id)) found.push_back(id);
            if (watch.isOver()) break;
        }
        const auto& letters = library.sources()[source].letters;
        if (letters) letters->release();
    }
    std::sort(found.begin(), found.end());
    return found;
}

}

std::vector<LetterId> matching(const Library& library, const LetterQuery& query,
                               const Cancelled& cancelled)
{
    return search(
        library, query, [](LetterId) { return true; }, cancelled);
}

std::vector<LetterId> matching(const Library& library, const LetterQuery& query,
                               const std::vector<LetterId>& among, const Cancelled& cancelled)
{
    std::vector<bool> isAmong(library.size());
    for (const LetterId id : among)
        isAmong[id] = true;
    return search(
        library, query, [&](LetterId id) { return isAmong[id]; }, cancelled);
}

bool isNarrower(const LetterQuery& next, const LetterQuery& before)
{
    if (next.exact != before.exact || !isSame(next.years, before.years) ||
        !isSame(next.excludedYears, before.excludedYears))
        return false;
    return std::all_of(before.terms.begin(), before.terms.end(), [&](const Term& old) {
        return std::any_of(next.terms.begin(), next.terms.end(),
                           [&](const Term& term) { return impliesTerm(term, old); });
    });
}

Results narrowed(const Library& library, const std::vector<LetterId>& matches,
                 const Narrowing& narrowing)
{
    Results results;
    results.matches = matches.size();
    Counts counts(library);
    for (const LetterId id : matches) {
        if (!isIn(narrowing, library, id)) continue;
        const bool inMonths = !narrowing.months || narrowing.months->contains(library.monthOf(id));
        const bool isPersons = !narrowing.person || library.personOf(id) == *narrowing.person;
        if (isPersons) counts.addMonth(id);
        if (inMonths) counts.addPerson(id);
        if (isPersons && inMonths) results.letters.push_back(id);
    }
    counts.into(results);
    return results;
}

}
