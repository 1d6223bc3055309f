// The font of the mail text.
#pragma once

namespace tolvek {

class ResumeNext;
class frmTolvek;

// Size, face, bold and italic of the mail text from the settings, each a
// statement of its caller's routine: a style whose flag is no number is error
// 13 for that flag alone. How much of the style is read for a flag is the
// caller's: the start takes the comma with it, the settings command doesn't.
enum class FlagText { WithComma, Alone };
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag);

}
