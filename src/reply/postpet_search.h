// Finds PostPet among the running programs, and starts it.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

class Form;

// The message shown before keys are sent to a running PostPet. It types them into
// whatever screen is open; only this message keeps them out of screens other than the
// main one.
inline constexpr TextView kOtherScreens =
    u"PostPetのメイン画面以外が開いているとエラーになります。\r\n"
    u"メイン画面以外は終了してください。\r\n\r\n"
    u"準備が出来たら「ＯＫ」を押して下さい。";

// Looks for a running PostPet, that is PostPet20.exe in gPostPetDir, and sets
// gPostPetPid to its process id, 0 if there is none. If the process list can't be read,
// this is reported, the calling form is unloaded and the program ends.
void findPostPet(Form& caller);
// Starts PostPet and sets gPostPetPid to its process id. Failures propagate.
void startPostPet();

}
