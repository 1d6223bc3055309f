// The platform's common font dialog.
//
// Put together from the toolkit's controls: the toolkit's own font dialog
// offers only the styles that a face has a file for, and the Japanese faces
// have none for bold or italic. The program's own faces head its list under
// their own names, whether they are installed or stood in for.
//
// Fields go in and out by name, as the platform's control has them; ShowFont is
// modal. A cancelled dialog is error 32755 when CancelError is set and changes
// no field. What its user leaves alone comes back as it went in: a face that
// isn't installed, a size with a fraction.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

class QWidget;

namespace tolvek {

inline constexpr int kDialogCancelled = 32755;
inline constexpr int kNoFonts = 24574;
inline constexpr int kScreenFonts = 1;

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
    void setFontName(TextView name) { fields_.FontName = name; }
    void setFontSize(float points); // not above 0 or beyond 2160: error 380
    void setFontBold(bool bold) { fields_.FontBold = bold; }
    void setFontItalic(bool italic) { fields_.FontItalic = italic; }
    void ShowFont(QWidget* owner); // no kind of fonts among the flags: error 24574

private:
    FontDialogFields fields_;
};

// Tests answer the dialog: true and changed fields for OK, false for Cancel.
void setFontDialogHook(std::function<bool(FontDialogFields&)> hook);

}
