// One friend as a record of Friend.Tmp: pet kind, pet's name, friend's name, address,
// mail count, as the program's field input parses them.
//
// The reader abandons the whole file at a record that it can't store, so such a friend
// is left out here. Texts are in double quotes, and the reader knows no doubled quote:
// a quote inside becomes ’, which is also what the friend table would contain in the
// end.
#pragma once
#include "platform/runtime/text.h"

#include <functional>
#include <optional>
#include <string>

namespace tolvek {

struct FriendEntry {
    Text kind; // the pet's code, "1" to "9" without "5"; anything else is no kind
    Text pet, name, address;
    int mails = 0; // written as 0 if it exceeds 16 bits
};

using FriendSink = std::function<void(const FriendEntry&)>;

// The width of a text column of the friend table, in characters.
inline constexpr int kFriendColumn = 64;

// A name in the form for the record: runs of controls become one blank, quotes ’,
// characters beyond code page 932 〓; at most kFriendColumn characters.
Text friendText(TextView written);

// An address in the form for the record, or "" if it can't be stored unchanged: no
// "@", blanks or controls inside, characters of the header grammar or beyond code page
// 932, too long. A leading "mailto:" is removed.
Text friendAddress(TextView written);

struct FriendRecord {
    Text address;
    std::string line; // with CR LF
};
std::optional<FriendRecord> friendRecord(const FriendEntry& entry);

}
