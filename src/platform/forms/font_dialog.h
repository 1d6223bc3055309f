// The classic platform's common font dialog.
//
// Built from the toolkit's controls: the toolkit's own font dialog offers only
// styles for which a face has a font file, and the Japanese faces have none for
// bold or italic. The program's own faces come first in the list under their own
// names, whether they are installed or substituted.
//
// Fields are set and read by name, as in the classic platform's control; ShowFont
// is modal. A cancelled dialog is error 32755 if CancelError is set, and changes no
// field. A value that the user doesn't change is returned as it was set, such as a
// face that isn't installed or a fractional size.
#pragma once
#include "platform/runtime/text.h"

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
    int Flags = 0; // 1: screen fonts
    const Text& FontName() const { return fields_.FontName; }
    float FontSize() const { return fields_.FontSize; }
    bool FontBold() const { return fields_.FontBold; }
    bool FontItalic() const { return fields_.FontItalic; }
    void setFontName(TextView name) { fields_.FontName = name; }
    void setFontSize(float points); // error 380 if not above 0 or beyond 2160
    void setFontBold(bool bold) { fields_.FontBold = bold; }
    void setFontItalic(bool italic) { fields_.FontItalic = italic; }
    void ShowFont(QWidget* owner); // error 24574 if the flags select no kind of fonts

private:
    FontDialogFields fields_;
};

}
