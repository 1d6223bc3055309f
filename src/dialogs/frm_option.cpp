#include "dialogs/frm_option.h"

#include "app/guard.h"
#include "app/settings.h"
#include "dialogs/frm_dir_sel.h"
#include "platform/forms/events.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"

#include <cmath>
#include <functional>

namespace tolvek {

namespace {

constexpr int kFileNotFound = 53;
constexpr int kTypeMismatch = 13;
constexpr TextView kWrongFolder = u"フォルダーの指定が間違っています。";

// Positions in a style "italic,bold", counted from 1.
constexpr int kItalicAt = 1;
constexpr int kBoldAt = 3;

// Any character but "0" counts as set.
bool isSet(const Text& style, int at)
{
    return mid(style, at, 1) != u"0";
}

TextView styleWord(const Text& style)
{
    const bool italic = isSet(style, kItalicAt), bold = isSet(style, kBoldAt);
    if (italic) return bold ? u"太字 & 斜体" : u"斜体";
    return bold ? u"太字" : u"標準";
}

// Runs statements that go on after a failure, and keeps the number of the last failure.
// A success doesn't clear it.
class ErrorNumber {
public:
    void operator()(const std::function<void()>& statement)
    {
        try {
            statement();
        } catch (const std::exception& failure) {
            number_ = asRuntimeError(failure).number();
        }
    }
    int number() const { return number_; }

private:
    int number_ = 0;
};

}

void frmOption::connectEvents()
{
    onEvent(cmbOpenPostPet, &CommandButton::Click, [this] { cmbOpenPostPet_Click(); });
    onEvent(cmdFontSet, &CommandButton::Click, [this] { cmdFontSet_Click(); });
    onEvent(cmbOK, &CommandButton::Click, [this] { cmbOK_Click(); });
    onEvent(cmbCancel, &CommandButton::Click, [this] { cmbCancel_Click(); });
}

void frmOption::Form_Load()
{
    CentreOnScreen();
    oldPostPetDir_ = gPostPetDir;
    txtDisp_PetDir->setText(gPostPetDir);
    txtMy_Address->setText(gMyMailAddr);
    txtMy_Handle->setText(gMyMailHandle);
    txtPetName->setText(gMyPetName);
    // Working copies; OK stores them.
    fontName_ = gMailTextFont;
    fontSize_ = gMailTextFontSize;
    fontStyle_ = gMailTextFontStyle;
    showFontLabels();
}

void frmOption::showFontLabels()
{
    lblFont->setCaption(u"フォント：" + fontName_);
    lblFontStyle->setCaption(u"スタイル：" + Text(styleWord(fontStyle_)));
    lblFontSize->setCaption(u"サイズ：" + decimal(fontSize_));
}

// A cancelled chooser may have changed the field too, through its drive list.
void frmOption::cmbOpenPostPet_Click()
{
    frmDir_Sel chooser;
    chooser.ShowModal(this);
    txtDisp_PetDir->setText(gPostPetDir);
}

// A stored style that is no number (13) must not keep the user from choosing another.
// Any other failure, such as a cancelled dialog, leaves the working fields unchanged.
// The dialog always starts from the stored fields; kept.
void frmOption::cmdFontSet_Click()
{
    ErrorNumber on;
    on([this] { cmFont.CancelError = true; });
    on([this] { cmFont.Flags = kScreenFonts; });
    on([this] { cmFont.setFontName(gMailTextFont); });
    on([this] { cmFont.setFontSize(static_cast<float>(gMailTextFontSize)); });
    on([this] { cmFont.setFontItalic(toInt16(mid(gMailTextFontStyle, kItalicAt, 1)) != 0); });
    on([this] { cmFont.setFontBold(toInt16(mid(gMailTextFontStyle, kBoldAt, 1)) != 0); });
    on([this] { cmFont.ShowFont(window()); });
    if (on.number() == 0 || on.number() == kTypeMismatch) takeFont();
    showFontLabels();
}

void frmOption::takeFont()
{
    fontName_ = cmFont.FontName();
    fontSize_ = static_cast<std::int32_t>(std::nearbyint(cmFont.FontSize())); // half to even
    fontStyle_ = Text(cmFont.FontItalic() ? u"1," : u"0,") + (cmFont.FontBold() ? u"1" : u"0");
}

// A folder that can't be examined keeps the dialog open. A file in its place is
// reported but accepted; kept.
bool frmOption::folderPasses() const
{
    int attributes = 0;
    try {
        attributes = getAttr(joinPath(txtDisp_PetDir->Text(), kReceiveFolder));
    } catch (const std::exception& failure) {
        // 53 when only 受信フォルダ is missing; if the folder above it is missing too, the
        // error is 76 and the user gets the other message.
        const bool missing = asRuntimeError(failure).number() == kFileNotFound;
        MsgBox(missing ? u"指定されたフォルダーが見つかりません。" : kWrongFolder);
        return false;
    }
    if ((attributes & vbDirectory) == 0) MsgBox(kWrongFolder);
    return true;
}

void frmOption::cmbOK_Click()
{
    if (!folderPasses()) return;
    gPostPetDir = txtDisp_PetDir->Text();
    gMyMailAddr = txtMy_Address->Text();
    gMyMailHandle = txtMy_Handle->Text();
    gMyPetName = txtPetName->Text();
    gMailTextFont = fontName_;
    gMailTextFontSize = fontSize_;
    gMailTextFontStyle = fontStyle_;
    Unload();
}

void frmOption::cmbCancel_Click()
{
    gPostPetDir = oldPostPetDir_;
    Unload();
}

void frmOption::Form_QueryUnload(UnloadMode mode)
{
    if (mode == UnloadMode::ControlMenu) gPostPetDir = oldPostPetDir_;
}

}
