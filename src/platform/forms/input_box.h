// One line of text asked from the user; Cancel gives an empty text. Takes what
// a text box takes. Tests answer through a handler.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

struct InputBoxRequest {
    Text prompt;
    Text title;
    Text defaultText;
};

Text InputBox(TextView prompt, TextView title, TextView defaultText = {});

using InputBoxHandler = std::function<Text(const InputBoxRequest&)>;
// Takes the place of the screen; an empty function gives the screen back.
void setInputBoxHandler(InputBoxHandler handler);

}
