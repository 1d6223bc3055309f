// Friends from a comma-delimited text: records of pet kind code, pet's name,
// friend's name, address, mail count.
//
// Fields may stand in double quotes, with a doubled quote for one of them and
// commas and line ends inside; missing fields at the end are empty. A record
// that isn't made like this, or more than these five, is no friend: a heading
// line has no count or no address, and a list of other columns isn't guessed
// at. A quote that isn't closed costs the line it stands in.
#pragma once
#include "converter/book_file.h"
#include "converter/friend_record.h"

namespace tolvek {

// UTF-8 when a mark tells or the bytes are, else code page 932.
void readCsvBook(const BookFile& file, const FriendSink& sink);

}
