// Walks PostPet's mail boxes.
//
// The order is fixed: receive main box, receive drawers, send main box, send drawers. A
// box is chosen only when its option is exactly 1. The converter finds out whether a
// box exists; nothing is checked before.
#pragma once

namespace tolvek {

// Converts each chosen box and reads the result. A failure propagates and leaves the
// remaining boxes unread; so does the first report of a failure that every later mail
// would meet. A path that the converter can't take is error 75 before the first box is
// read.
void MailBoxRead();

}
