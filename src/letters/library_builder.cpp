#include "letters/library_builder.h"

#include "letters/letter_file.h"

#include <algorithm>
#include <numeric>

namespace tolvek {

namespace {

using Place = Library::Place;

const LetterFile& fileOf(const Library& library, const Place& place)
{
    return *library.sources()[place.file].letters;
}

const LetterRow& rowOf(const Library& library, const Place& place)
{
    return fileOf(library, place).rows()[place.row];
}

// Rows of one file are always different letters, even if nothing but their sub keys tells
// them apart; so the second of them is the same letter as the second of another file.
std::uint64_t identityOfNth(std::uint64_t identity, std::uint32_t nth)
{
    return identity + nth * 0x9E3779B97F4A7C15;
}

bool isDamaged(const LetterFile& file, const LetterRow& row)
{
    return file.field(row, kText).find(u'\0') != TextView::npos;
}

bool hasValue(TextView name)
{
    return !name.empty() && name != kNoLetterValue;
}

}

void LibraryBuilder::build()
{
    takeRows();
    sort();
    readBook();
    findPeople();
    findConversations();
}

void LibraryBuilder::takeRows()
{
    library_.ids_.resize(library_.sources_.size());
    for (std::uint32_t file = 0; file < library_.sources_.size(); ++file) {
        const auto& letters = library_.sources_[file].letters;
        if (!letters) continue;
        inThisFile_.clear();
        library_.ids_[file].assign(letters->rows().size(), Library::kHidden);
        for (std::uint32_t row = 0; row < letters->rows().size(); ++row)
            takeRow(file, row);
    }
}

// The first file's copy is shown, unless its text lost something that a later one has.
void LibraryBuilder::takeRow(std::uint32_t file, std::uint32_t row)
{
    auto& places = library_.places_;
    const LetterFile& letters = *library_.sources_[file].letters;
    const LetterRow& stored = letters.rows()[row];
    const std::uint64_t identity = identityOfNth(stored.identity, inThisFile_[stored.identity]++);
    const auto [known, isNew] =
        known_.try_emplace(identity, static_cast<std::uint32_t>(places.size()));
    Place place;
    place.file = file;
    place.row = row;
    place.identity = identity;
    place.month = stored.month();
    place.sent = stored.sent != 0;
    if (isNew) {
        places.push_back(place);
        return;
    }
    Place& shown = places[known->second];
    auto& files = further_[known->second];
    if (files.empty()) files.push_back(static_cast<int>(shown.file));
    files.push_back(static_cast<int>(file));
    const LetterFile& before = fileOf(library_, shown);
    if (isDamaged(before, rowOf(library_, shown)) && !isDamaged(letters, stored)) shown = place;
}

// Newest first; what is of one second by falling sub keys, so that the other direction is
// the order in which the letters were stored.
void LibraryBuilder::sort()
{
    const std::vector<Place> taken = std::move(library_.places_);
    std::vector<std::uint32_t> order(taken.size());
    std::iota(order.begin(), order.end(), 0u);
    std::vector<std::pair<std::int64_t, std::int32_t>> dates;
    dates.reserve(taken.size());
    for (const Place& place : taken)
        dates.emplace_back(rowOf(library_, place).order, rowOf(library_, place).subKey);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return dates[a] > dates[b]; });
    library_.places_.clear();
    library_.places_.reserve(taken.size());
    for (const std::uint32_t from : order) {
        const auto id = static_cast<LetterId>(library_.places_.size());
        const Place& place = library_.places_.emplace_back(taken[from]);
        library_.ids_[place.file][place.row] = id;
        library_.identities_.emplace_back(place.identity, id);
        const auto files = further_.find(from);
        if (files != further_.end()) library_.furtherFiles_[id] = std::move(files->second);
    }
    std::sort(library_.identities_.begin(), library_.identities_.end());
}

// The archive in use has the book as it is now; older files only add to it.
void LibraryBuilder::readBook()
{
    for (const Library::Source& source : library_.sources_) {
        if (!source.letters) continue;
        for (const BookFriend& entry : source.letters->friends())
            if (hasValue(entry.name)) book_.try_emplace(lowerCase(entry.address), entry.name);
    }
}

PersonId LibraryBuilder::personNamed(const Text& name, bool isFriend)
{
    Person person;
    person.name = name;
    person.isFriend = isFriend;
    library_.people_.push_back(std::move(person));
    return static_cast<PersonId>(library_.people_.size() - 1);
}

// Addresses with one name in the friend book are one person. Where a letter has no
// address, its name has to do.
PersonId LibraryBuilder::personOf(const Letter& letter)
{
    const TextView address = letter.sent ? letter.receiverAddress : letter.senderAddress;
    const TextView name = letter.sent ? letter.receiverName : letter.senderName;
    const bool isAddress = hasValue(address);
    const Text key = isAddress ? lowerCase(address) : u'\0' + Text(name);
    if (const auto known = byAddress_.find(key); known != byAddress_.end()) return known->second;
    PersonId person = 0;
    const auto entry = book_.find(key);
    if (entry != book_.end()) {
        const auto [known, isNew] = byFriend_.try_emplace(entry->second, PersonId{0});
        if (isNew) known->second = personNamed(entry->second, true);
        person = known->second;
    } else {
        person = personNamed(Text(name), false);
    }
    if (isAddress) library_.people_[person].addresses.emplace_back(address);
    return byAddress_.emplace(key, person).first->second;
}

// Newest letters first, so a name is the one used last.
void LibraryBuilder::findPeople()
{
    for (LetterId id = 0; id < library_.places_.size(); ++id) {
        const Letter letter = library_.letter(id);
        const PersonId person = personOf(letter);
        library_.places_[id].person = person;
        Person& counted = library_.people_[person];
        ++(letter.sent ? counted.sent : counted.received);
        const TextView name = letter.sent ? letter.receiverName : letter.senderName;
        if (!hasValue(counted.name)) counted.name = name;
    }
    for (Person& person : library_.people_)
        if (!hasValue(person.name) && !person.addresses.empty())
            person.name = person.addresses.front();
}

void LibraryBuilder::findConversations()
{
    std::unordered_map<std::uint64_t, std::uint32_t> numbers;
    for (Place& place : library_.places_) {
        const std::uint64_t key = rowOf(library_, place).conversation ^
                                  (std::uint64_t{place.person} + 1) * 0x9E3779B97F4A7C15;
        const auto number = static_cast<std::uint32_t>(numbers.size());
        place.conversation = numbers.try_emplace(key, number).first->second;
    }
}

}
