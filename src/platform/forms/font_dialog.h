// The platform's common font dialog, over the toolkit's.
//
// Fields go in and out by name, as the platform's control has them; ShowFont is
// modal. A cancelled dialog is error 32755 when CancelError is set and changes
// no field.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

class QWidget;

namespace tolvek {

inline constexpr int kDialogCancelled = 32755;

struct FontDialogFields {
    Text FontName;
    float FontSize = 8; // points
    bool FontBold = false;
    bool FontItalic = false;
};

class FontDialog {
public:
    bool CancelError = false;
    int Flags = 0; // 1: fonts of the screen
    const Text& FontName() const { return fields_.FontName; }
    float FontSize() const { return fields_.FontSize; }
    bool FontBold() const { return fields_.FontBold; }
    bool FontItalic() const { return fields_.FontItalic; }
    void setFontName(TextView name);
    void setFontSize(float points); // not above 0 or beyond 2160: error 380
    void setFontBold(bool bold);
    void setFontItalic(bool italic);
    void ShowFont(QWidget* owner);

private:
    FontDialogFields fields_;
};

// Tests answer the dialog: true and changed fields for OK, false for Cancel.
void setFontDialogHook(std::function<bool(FontDialogFields&)> hook);

}
