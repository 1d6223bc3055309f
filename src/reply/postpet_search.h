// PostPet among the programs that run, and its start.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

class Form;

// What the user is asked before keys go to a PostPet that runs already: it takes
// them in whatever screen it shows, and this is all that keeps them from another
// one than the main screen.
inline constexpr TextView kOtherScreens =
    u"PostPetのメイン画面以外が開いているとエラーになります。\r\n"
    u"メイン画面以外は終了してください。\r\n\r\n"
    u"準備が出来たら「ＯＫ」を押して下さい。";

// Looks for a running PostPet, PostPet20.exe in gPostPetDir: gPostPetPid is its
// process id, 0 for none. A failed snapshot is reported, and ends the program with
// the calling form unloaded.
void findPostPet(Form& caller);
// Starts PostPet; its process id goes into gPostPetPid. Failures go to the caller.
void startPostPet();

}
