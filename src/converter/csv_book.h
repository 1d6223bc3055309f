// Friends from comma-delimited text: records of pet kind code, pet's name, friend's
// name, address, mail count.
//
// Fields may be in double quotes, with a doubled quote for a quote inside, and with
// commas and line ends; missing fields at the end are empty. A record of another form,
// or with more than these five fields, is no friend: a heading line has no count or no
// address, and the meaning of other columns isn't guessed. An unclosed quote costs the
// line that it is in.
#pragma once
#include "converter/book_file.h"
#include "converter/friend_record.h"

namespace tolvek {

// UTF-8 if there is a byte order mark or the bytes look like it, else code page 932.
void readCsvBook(const BookFile& file, const FriendSink& sink);

}
