// Sends a reply through PostPet: brings its window to the front and fills its new-mail
// screen by keystrokes.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class Form;

// isReply -1: replies to the sender of the subject list's row, with its subject. 0:
// writes to `address`, without a subject. A subject that can't be typed is skipped; any
// other failure is reported and sets gPostPetPid to 0.
void SendMail(Form& form, Int16 row, const Text& address, Int16 isReply);

}
