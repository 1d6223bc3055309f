// One letter, as search, window and export see it.
//
// A long mail that the store holds in parts is one letter: its texts are joined, its date
// and time are those of the first part, and its subject has no mark of continuation.
#pragma once
#include "platform/runtime/text.h"

#include <cstdint>

namespace tolvek {

// A letter's place in one Library, 0 to size() - 1, newest first. Another Library has
// other numbers; `Letter::identity` stays.
using LetterId = std::uint32_t;
// A correspondent's number in one Library.
using PersonId = std::uint32_t;

// The views belong to the Library that gave the letter.
struct Letter {
    TextView date;       // yyyymmdd as stored; the month may be 00
    TextView time;       // hhmmss as stored; an hour may have one digit
    int subKey = 0;      // of the first part
    bool sent = false;   // from the send side
    TextView senderName; // kNoLetterValue where the mail had none; so the next three
    TextView senderAddress;
    TextView receiverName;
    TextView receiverAddress;
    TextView subject;
    TextView text;              // CR LF line ends
    int parts = 1;              // rows of the store that make it up
    PersonId person = 0;        // the other side: who wrote it, or to whom it went
    std::uint64_t identity = 0; // the same in every Library that holds this letter

    int year() const;  // 0 if the stored date has none
    int month() const; // 1 to 12, or 0
};

// What the store holds for a name or an address that a mail lacked.
inline constexpr TextView kNoLetterValue = u"設定無し";

}
