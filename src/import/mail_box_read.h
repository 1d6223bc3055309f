// The walk over PostPet's mail boxes.
//
// The order of the boxes is fixed: receive main box, receive drawers, send main
// box, send drawers. A box counts as chosen only when its option is exactly 1.
// Whether a box is there is the converter's affair; nobody looks before.
#pragma once

namespace tolvek {

// Lets each chosen box be converted and reads what came of it. A failure goes
// to the caller and leaves the rest of the boxes unread; so does the first report
// of one that will hold for every mail. A path that the converter can't take is
// error 75 before the first box is read.
void MailBoxRead();

}
