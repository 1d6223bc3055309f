// The command that reads PostPet's mail.
#pragma once

namespace tolvek {

class frmTolvek;

// Asks for the boxes, imports the friend book, reads the boxes, writes the book's names
// over the mails, rebuilds the search tables and lists the navigator again. Reports its
// own failures under "comMailRead_Click" and goes on, so that the commands are always
// enabled again.
void comMailRead_Click(frmTolvek& form);

}
