// The font of the mail text.
#pragma once

namespace tolvek {

class ResumeNext;
class frmTolvek;

// Applies size, face, bold and italic from the settings to the mail text. Each is a
// statement of the caller's routine: a flag that is no number is error 13 for that flag
// alone. The caller chooses how many characters of the style are parsed for a flag: at
// start-up the comma is included, in the settings command it isn't.
enum class FlagText { WithComma, Alone };
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag);

}
