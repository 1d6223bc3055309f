// Asks the user for one line of text; Cancel returns an empty text. Accepts what a
// text box accepts.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

struct InputBoxRequest {
    Text prompt;
    Text title;
    Text defaultText;
};

Text InputBox(TextView prompt, TextView title, TextView defaultText = {});

}
