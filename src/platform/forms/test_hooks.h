// For tests alone: answers the dialogs and takes the keys that would go to another
// program. A hook stays until it is set again; an empty argument restores the real thing.
#pragma once
#include "platform/forms/font_dialog.h"
#include "platform/forms/input_box.h"
#include "platform/runtime/runtime_error.h"

#include <QRect>

#include <cstdint>
#include <functional>

namespace tolvek::hooks {

void setInputBox(std::function<Text(const InputBoxRequest&)> answer);

// True with changed fields means OK, false means Cancel.
void setFontDialog(std::function<bool(FontDialogFields&)> answer);

struct KeySender {
    std::function<void(std::int32_t)> AppActivate;
    std::function<void(TextView)> SendKeys;
};
void setKeySender(KeySender sender);

// The part of the screen that windows may cover (Screen::available).
void setAvailableScreen(std::function<QRect()> area);

// Gets a RuntimeError that leaves an event procedure (events.h).
void setUntrapped(std::function<void(const RuntimeError&)> handler);

}
