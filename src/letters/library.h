// All letters of several archive files, each letter once, with its correspondents.
//
// A Library never changes, so any thread may read it without a lock. When a file has been
// read, changed or gone, a new Library is made that shares the unchanged files' letters
// with the old one. Hold it as std::shared_ptr<const Library>.
//
// Two rows of different files are the same letter if date, time, both addresses and the
// subject agree. That is the rule by which the program decides that a mail is stored
// already; the sub key may differ, because a backup empties the archive in which sub keys
// are counted.
#pragma once
#include "letters/archives.h"
#include "letters/letter.h"

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace tolvek {

class LetterFile; // the letters of one archive file (letter_file.h)

enum class ReadState {
    Unread,
    Waiting, // another program is writing it; it is read as soon as that has ended
    Read,
    Failed
};

struct ArchiveStatus {
    ArchiveFile file;
    ReadState state = ReadState::Unread;
    std::size_t letters = 0;
    int error = 0; // number and text, if Failed
    Text description;
};

struct Person {
    Text name;                   // by the friend book; else the name last used, or the address
    std::vector<Text> addresses; // more than one only by the friend book
    bool isFriend = false;
    std::size_t received = 0, sent = 0;
};

class Library {
public:
    struct Source {
        ArchiveStatus status;
        std::shared_ptr<const LetterFile> letters; // null unless Read
    };
    // The sources in the order of precedence: a letter that several files hold is shown
    // as the first of them has it.
    explicit Library(std::vector<Source> sources = {});
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    std::size_t size() const { return places_.size(); }
    Letter letter(LetterId id) const;
    // The files that hold the letter, as indexes into archives(), in order.
    std::vector<int> filesOf(LetterId id) const;
    std::optional<LetterId> find(std::uint64_t identity) const;

    const std::vector<Source>& sources() const { return sources_; }
    const std::vector<Person>& people() const { return people_; } // by PersonId
    PersonId personOf(LetterId id) const { return places_[id].person; }
    // yyyymm, 0 if unknown; cheaper than letter().
    int monthOf(LetterId id) const { return places_[id].month; }
    bool isSent(LetterId id) const { return places_[id].sent; }

    // Letters of one person whose subjects agree without "Re:" and the like.
    std::uint32_t conversationOf(LetterId id) const { return places_[id].conversation; }

    // For the search: which of the sources, and which letter there.
    struct Place {
        std::uint32_t file = 0, row = 0;
        PersonId person = 0;
        std::uint32_t conversation = 0;
        std::uint64_t identity = 0;
        int month = 0;
        bool sent = false;
    };
    const Place& place(LetterId id) const { return places_[id]; }
    // By source and row; kHidden for a row that another file's row stands for.
    static constexpr LetterId kHidden = ~LetterId{0};
    const std::vector<LetterId>& idsOf(std::size_t source) const { return ids_[source]; }

private:
    friend class LibraryBuilder;
    std::vector<Source> sources_;
    std::vector<Place> places_;
    std::vector<Person> people_;
    std::vector<std::vector<LetterId>> ids_;
    std::vector<std::pair<std::uint64_t, LetterId>> identities_; // sorted
    std::map<LetterId, std::vector<int>> furtherFiles_;          // of letters in several files
};

}
