// The question before a command that changes much.
#pragma once
#include "platform/runtime/msg_box.h"

namespace tolvek {

// A Yes/No box as a statement of the command's guard (ResumeNext, PassOver53);
// `enterGives` is the default button. A failed box is a No.
template <class Guard> bool isConfirmed(const Guard& on, TextView question, MsgAnswer enterGives)
{
    MsgAnswer answer = MsgAnswer::No;
    on([&] {
        answer = MsgBox(question, MsgButtons::YesNo, kApplicationTitle, MsgIcon::None, enterGives);
    });
    return answer == MsgAnswer::Yes;
}

}
