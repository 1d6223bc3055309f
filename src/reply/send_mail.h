// A reply through PostPet: its window to the front, its new-mail screen filled by
// keystrokes.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class Form;

// isReply -1: to the sender of the subject list's row, with its subject; 0: to
// the address, without one. A failed subject is passed over; any other failure
// is reported, and gPostPetPid is 0 then.
void SendMail(Form& form, Int16 row, const Text& address, Int16 isReply);

}
