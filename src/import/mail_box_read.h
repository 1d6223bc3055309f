// The command that reads PostPet's mail, and the walk over its mail boxes.
//
// The order of the boxes is fixed: receive main box, receive drawers, send main
// box, send drawers. A box counts as chosen only when its option is exactly 1.
// Whether a box is there is the converter's affair; nobody looks before.
#pragma once

namespace tolvek {

class frmTolvek;

// Asks for the boxes, takes in the friend book, reads the boxes, gives the mails
// the book's names, brings the search tables up to date and lists the navigator
// anew. Reports its own failures under "comMailRead_Click" and goes on, so that
// the commands always come back.
void comMailRead_Click(frmTolvek& form);

// Lets each chosen box be converted and reads what came of it. A failure goes
// to the caller and leaves the rest of the boxes unread; so does the first report
// of one that will hold for every mail. A path that the converter can't take is
// error 75 before the first box is read.
void MailBoxRead();

}
