// Makes a Library out of its sources: each letter once, the newest first, with its person
// and its conversation.
#pragma once
#include "letters/library.h"

#include <unordered_map>

namespace tolvek {

class LibraryBuilder {
public:
    explicit LibraryBuilder(Library& library) : library_(library) {}
    void build();

private:
    void takeRows();
    void takeRow(std::uint32_t file, std::uint32_t row);
    void sort();
    void readBook();
    void findPeople();
    PersonId personOf(const Letter& letter);
    PersonId personNamed(const Text& name, bool isFriend);
    void findConversations();

    Library& library_;
    // By identity: the place, before and after the sorting.
    std::unordered_map<std::uint64_t, std::uint32_t> known_;
    std::unordered_map<std::uint64_t, std::uint32_t> inThisFile_; // how often, so far
    std::map<std::uint32_t, std::vector<int>> further_;
    std::unordered_map<Text, Text> book_; // address to name
    std::unordered_map<Text, PersonId> byAddress_, byFriend_;
};

}
