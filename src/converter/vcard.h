// Friends from vCards, versions 2.1 to 4.0: one of each card that has an
// address.
//
// The name is FN, else N put together (family, given and further names with
// blanks between), else the first NICKNAME. The address is the preferred
// EMAIL, else the first, among those that can be stored. Nothing on a card
// tells of a pet or of mails.
//
// Values without a charset are in the one that the unlabelled values of their
// card, taken together, look like: a single name is too short to guess from.
#pragma once
#include "converter/book_file.h"
#include "converter/friend_record.h"

namespace tolvek {

void readVcards(const BookFile& file, const FriendSink& sink);

}
