#include "window/mail_font.h"

#include "app/guard.h"
#include "app/settings.h"
#include "platform/runtime/numbers.h"
#include "window/frm_tolvek.h"

namespace tolvek {

// In "0,1" the italic flag is followed by a comma, which the number conversion accepts
// as a thousands separator.
void applyMailFont(frmTolvek& form, const ResumeNext& on, FlagText flag)
{
    MultiLineTextBox& pane = *form.txtMail;
    const int length = flag == FlagText::WithComma ? 2 : 1;
    on([&] { pane.setFontSize(static_cast<float>(gMailTextFontSize)); });
    on([&] { pane.setFontName(gMailTextFont); });
    on([&] { pane.setFontBold(toInt16(mid(gMailTextFontStyle, 3, length)) != 0); });
    on([&] { pane.setFontItalic(toInt16(mid(gMailTextFontStyle, 1, length)) != 0); });
}

}
