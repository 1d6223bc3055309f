// The command that reads PostPet's mail.
#pragma once

namespace tolvek {

class frmTolvek;

// Asks for the boxes, takes in the friend book, reads the boxes, gives the mails
// the book's names, brings the search tables up to date and lists the navigator
// anew. Reports its own failures under "comMailRead_Click" and goes on, so that
// the commands always come back.
void comMailRead_Click(frmTolvek& form);

}
