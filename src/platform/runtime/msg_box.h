// Message boxes. Plain text, never markup; every line break (CR LF, LF CR, CR,
// LF) is one break on the screen.
//
// A Yes/No box has no close by Escape; closing it otherwise is No. An OK/Cancel
// box has OK as its default; Escape and closing are Cancel. Captions: はい,
// いいえ, OK, キャンセル. Tests answer through a handler (tests/support).
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

enum class MsgButtons { Ok, YesNo, OkCancel };
enum class MsgIcon { None, Critical };
enum class MsgAnswer { Ok, Yes, No, Cancel };

struct MsgBoxRequest {
    Text text; // as given, line ends unchanged
    MsgButtons buttons = MsgButtons::Ok;
    Text title;
    MsgIcon icon = MsgIcon::None;
    MsgAnswer defaultAnswer = MsgAnswer::Yes; // of a Yes/No box
};

// The title of a box that is given none.
inline constexpr TextView kApplicationTitle = u"Tolvek";

MsgAnswer MsgBox(TextView text, MsgButtons buttons = MsgButtons::Ok,
                 TextView title = kApplicationTitle, MsgIcon icon = MsgIcon::None,
                 MsgAnswer defaultAnswer = MsgAnswer::Yes);

// Shows a box and waits for its answer; set by the layer that has windows. A
// program without one must not ask: error 51.
using MsgBoxScreen = MsgAnswer (*)(const MsgBoxRequest&);
void setMsgBoxScreen(MsgBoxScreen screen);

using MsgBoxHandler = std::function<MsgAnswer(const MsgBoxRequest&)>;
// Takes the place of the screen; an empty function gives the screen back.
void setMsgBoxHandler(MsgBoxHandler handler);

// Called before the program waits for its user (a box or a modal form), so
// that nothing is held open meanwhile.
void setBeforeWait(std::function<void()> hook);
void beforeWait();

}
