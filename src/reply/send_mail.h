// A reply through PostPet: found or started, brought to the front, and its
// new-mail screen filled by keystrokes.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

class Form;
class frmTolvek;

// Looks for a running PostPet, PostPet20.exe in gPostPetDir: gPostPetPid is its
// process id, 0 for none. A failed snapshot is told, and ends the program with
// the calling form unloaded.
void findPostPet(Form& caller);
// Starts PostPet; its process id goes into gPostPetPid. Failures go to the caller.
void startPostPet();

// isReply -1: to the sender of the subject list's row, with its subject; 0: to
// the address, without one. A failed subject is passed over; any other failure
// is told, and gPostPetPid is 0 then.
void SendMail(Form& form, Int16 row, const Text& address, Int16 isReply);

// The reply button of the main window.
void comSendMail_Click(frmTolvek& form);
// The mail button of the friend editor; its own failures are untrapped.
void cmdSndMail_Click(Form& editor, const Text& address);

}
