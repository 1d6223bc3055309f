// Message boxes. Plain text, never markup; every line break (CR LF, LF CR, CR, LF)
// is shown as one break.
//
// A Yes/No box can't be closed with Escape; closing it in another way means No. An
// OK/Cancel box has OK as its default; Escape and closing mean Cancel. Captions:
// はい, いいえ, OK, キャンセル.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

enum class MsgButtons { Ok, YesNo, OkCancel };
enum class MsgIcon { None, Critical };
enum class MsgAnswer { Ok, Yes, No, Cancel };

struct MsgBoxRequest {
    Text text; // unchanged, including its line ends
    MsgButtons buttons = MsgButtons::Ok;
    Text title;
    MsgIcon icon = MsgIcon::None;
    MsgAnswer defaultAnswer = MsgAnswer::Yes; // for a Yes/No box only
};

// The title of a box without a title of its own.
inline constexpr TextView kApplicationTitle = u"Tolvek";

MsgAnswer MsgBox(TextView text, MsgButtons buttons = MsgButtons::Ok,
                 TextView title = kApplicationTitle, MsgIcon icon = MsgIcon::None,
                 MsgAnswer defaultAnswer = MsgAnswer::Yes);

// Shows a box and waits for its answer; set by the layer that has windows. A
// program without windows must not ask: error 51.
using MsgBoxScreen = MsgAnswer (*)(const MsgBoxRequest&);
void setMsgBoxScreen(MsgBoxScreen screen);

// The hook is called before the program waits for its user (in a box or a modal
// form), so that nothing is held open meanwhile.
void setBeforeWait(std::function<void()> hook);
void beforeWait();

}
