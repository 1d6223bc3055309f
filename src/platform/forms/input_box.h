// Asks the user for one line of text; Cancel returns an empty text. Accepts what a
// text box accepts. Tests answer through a handler.
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
// Replaces the screen; an empty function restores it.
void setInputBoxHandler(InputBoxHandler handler);

}
