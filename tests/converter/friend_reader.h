// Parses Friend.Tmp with the program's own field input, for tests.
#pragma once
#include "converter/friend_book.h"
#include "platform/runtime/text_files.h"
#include "support/temp_folder.h"
#include "support/test_data.h"

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

namespace tolvek::test {

struct ReadFriend {
    std::string kind, pet, name, address; // UTF-8
    int mails = 0;

    bool operator==(const ReadFriend&) const = default;
};
using ReadFriends = std::vector<ReadFriend>;

inline void PrintTo(const ReadFriend& read, std::ostream* out)
{
    *out << read.kind << '|' << read.pet << '|' << read.name << '|' << read.address << '|'
         << read.mails;
}

// A file of tests/data/friends and its friends.
struct ExpectedFriends {
    const char* file;
    ReadFriends friends;
};

inline void PrintTo(const ExpectedFriends& expected, std::ostream* out)
{
    *out << expected.file;
}

// A friend as read from a vCard.
inline ReadFriend carded(std::string name, std::string address)
{
    return {"0", "", std::move(name), std::move(address), 0};
}

inline ReadFriends readFriendTmp(const std::filesystem::path& path)
{
    ReadFriends friends;
    if (!std::filesystem::exists(path)) return friends;
    const Int16 number = freeFile();
    openForInput(fromUtf8(path.string()), number);
    while (!endOfFile(number)) {
        ReadFriend& read = friends.emplace_back();
        for (std::string* field : {&read.kind, &read.pet, &read.name, &read.address})
            *field = toUtf8(inputText(number));
        read.mails = inputInt16(number);
    }
    closeFile(number);
    return friends;
}

// Converts a folder that contains this one file.
inline ReadFriends friendsOf(const std::string& name, const std::string& bytes)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder / "book");
    writeBytes(folder / "book" / name, bytes);
    convertFriendBook(folder / "book", folder / "Friend.Tmp");
    return readFriendTmp(folder / "Friend.Tmp");
}

inline ReadFriends friendsOfFile(const std::string& name)
{
    const auto path = std::filesystem::path(TOLVEK_TEST_DATA) / "friends" / name;
    return friendsOf(name, readBytes(path));
}

}
