#include "platform/runtime/msg_box.h"

#include "platform/runtime/runtime_error.h"
#include "platform/runtime/test_hooks.h"

#include <utility>

namespace tolvek {

namespace {

// constinit: forms installs its screen during static initialisation, in any order.
constinit MsgBoxScreen msgBoxScreen = nullptr;

std::function<MsgAnswer(const MsgBoxRequest&)>& answerOfTests()
{
    static std::function<MsgAnswer(const MsgBoxRequest&)> answer;
    return answer;
}

std::function<void()>& beforeWaitHook()
{
    static std::function<void()> hook;
    return hook;
}

MsgAnswer shown(const MsgBoxRequest& request)
{
    // Without a screen the text of the box goes into the error, so that it isn't
    // lost.
    if (!msgBoxScreen) throw RuntimeError(51, u"内部エラーです。(" + request.text + u")", nullptr);
    return msgBoxScreen(request);
}

}

void setMsgBoxScreen(MsgBoxScreen screen)
{
    msgBoxScreen = screen;
}

void hooks::setMsgBox(std::function<MsgAnswer(const MsgBoxRequest&)> answer)
{
    answerOfTests() = std::move(answer);
}

void setBeforeWait(std::function<void()> hook)
{
    beforeWaitHook() = std::move(hook);
}

void beforeWait()
{
    if (beforeWaitHook()) beforeWaitHook()();
}

MsgAnswer MsgBox(TextView text, MsgButtons buttons, TextView title, MsgIcon icon,
                 MsgAnswer defaultAnswer)
{
    beforeWait();
    // It has run even if a test answers, so that tests take the same steps.
    const MsgBoxRequest request{Text(text), buttons, Text(title), icon, defaultAnswer};
    return answerOfTests() ? answerOfTests()(request) : shown(request);
}

}
