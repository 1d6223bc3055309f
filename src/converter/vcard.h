// Friends from vCards, versions 2.1 to 4.0: one of each card that has an address.
//
// The name is FN, else N joined (family, given and further names, with blanks
// between), else the first NICKNAME. The address is the preferred EMAIL, else the
// first, among those that can be stored. A card has no information about pets or
// mails.
//
// Values without a charset are decoded with the one guessed from all unlabelled values
// of the card together: a single name is too short to guess from.
#pragma once
#include "converter/book_file.h"
#include "converter/friend_record.h"

namespace tolvek {

void readVcards(const BookFile& file, const FriendSink& sink);

}
