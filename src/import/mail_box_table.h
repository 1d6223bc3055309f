// The mail boxes of PostPet's folder: where they lie and what their files are
// called. The names are PostPet's own.
#pragma once
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

namespace tolvek {

struct MailBoxFiles {
    Text list; // *.ppl
    Text mail; // *.ppm
};

inline constexpr TextView kReceiveFolder = u"受信フォルダ";
inline constexpr TextView kSendFolder = u"送信フォルダ";

// The main boxes, chosen by element 0 of their side's read options.
extern const MailBoxFiles kReceiveMainBox;
extern const MailBoxFiles kSendMainBox;

// The drawers. Row R stands in both folders and is chosen by element R + 1.
// Rows 9 to 15 are empty and are kept as room.
extern CheckedArray<MailBoxFiles, 16> gMailBoxTable;

// Called once, while the main window is initialised.
void fillMailBoxTable();

}
