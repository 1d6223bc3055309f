// One friend as a record of Friend.Tmp: pet kind, pet's name, friend's name,
// address, mail count, as the program's field input reads them.
//
// The reader gives up its whole file at a record that it can't store, so
// whatever could be one isn't written: the friend is left out. Texts stand in
// double quotes, and the reader knows no doubled quote: a quote inside becomes
// ’, which is what the friend table would hold in the end.
#pragma once
#include "platform/runtime/text.h"

#include <functional>
#include <optional>
#include <string>

namespace tolvek {

struct FriendEntry {
    Text kind; // the pet's code, "1" to "9" without "5"; anything else tells no kind
    Text pet, name, address;
    int mails = 0; // out of the count's 16 bits: 0
};

using FriendSink = std::function<void(const FriendEntry&)>;

// What one column of the friend table holds, in characters.
inline constexpr int kFriendColumn = 64;

// A name as the record bears it: a run of controls is one blank, no quotes,
// characters beyond code page 932 are 〓, at most kFriendColumn characters.
Text friendText(TextView written);

// An address as the record bears it, "" when it can't be stored as it stands:
// no "@", blanks or controls inside, characters of the headings' grammar or
// beyond code page 932, too long. A "mailto:" in front isn't part of it.
Text friendAddress(TextView written);

struct FriendRecord {
    Text address;
    std::string line; // with CR LF
};
std::optional<FriendRecord> friendRecord(const FriendEntry& entry);

}
