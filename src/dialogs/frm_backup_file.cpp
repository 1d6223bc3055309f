#include "dialogs/frm_backup_file.h"

#include "app/file_names.h"
#include "app/file_routines.h"
#include "app/state.h"
#include "platform/forms/events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr std::int32_t kLimit = 999;

// All in twips.
constexpr float kMargin = 240;
constexpr float kListWidth = 4650;
constexpr float kListHeight = 3000;
constexpr float kButtonWidth = 1395;
constexpr float kButtonHeight = 390;
constexpr float kButtonGap = 150;
constexpr float kButtonTop = kMargin + kListHeight + 210;
constexpr float kCancelLeft = kMargin + kListWidth - kButtonWidth;
constexpr float kOkLeft = kCancelLeft - kButtonGap - kButtonWidth;
constexpr float kFormWidth = kListWidth + 2 * kMargin;
constexpr float kFormHeight = kButtonTop + kButtonHeight + kMargin;

// Only the live store has exactly this name. Any other file with the extension may be a
// backup, renamed or copied from elsewhere.
std::vector<Text> backUpFiles()
{
    std::vector<Text> names;
    std::int32_t count = 0;
    FileNameGet(appPath(), u"Mdb", kLimit, names, count);
    std::erase(names, Text(kArchiveName));
    // FileNameGet returns the names in descending order.
    std::reverse(names.begin(), names.end());
    return names;
}

}

frmBackUpFile::frmBackUpFile(const Form& main)
    : Form(u"frmBackUpFile", BorderStyle::FixedDialog), main_(main)
{
    setCaption(u"BackUP File 選択");
    setTitleOnly();
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kFormHeight + kTitleTwipsHigh);
}

void frmBackUpFile::buildControls()
{
    lstBackUpFile = new ListBox(*this, u"lstBackUpFile");
    lstBackUpFile->setSpokenName(u"バックアップ ファイル一覧");
    lstBackUpFile->Move(kMargin, kMargin, kListWidth, kListHeight);
    cmdOK = new CommandButton(*this, u"cmdOK", u"OK");
    cmdOK->Move(kOkLeft, kButtonTop, kButtonWidth, kButtonHeight);
    cmdOK->setToolTipText(u"一覧から選んで押します。選ばれていないときは、何も起きません。");
    cmdCancel = new CommandButton(*this, u"cmdCancel", u"Cnacel");
    cmdCancel->Move(kCancelLeft, kButtonTop, kButtonWidth, kButtonHeight);
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    Control* const tabs[] = {lstBackUpFile, cmdOK, cmdCancel};
    int tab = 0;
    for (Control* control : tabs)
        control->setTabIndex(tab++);
    onEvent(cmdOK, &CommandButton::Click, [this] { cmdOK_Click(); });
    onEvent(cmdCancel, &CommandButton::Click, [this] { cmdCancel_Click(); });
}

void frmBackUpFile::Form_Load()
{
    CentreOver(main_);
    names_ = backUpFiles();
    lstBackUpFile->Clear();
    for (const Text& name : names_)
        lstBackUpFile->AddItem(name);
    if (names_.empty()) MsgBox(u"バックアップ ファイルはまだ作成されていません。");
}

void frmBackUpFile::cmdOK_Click()
{
    const int chosen = lstBackUpFile->ListIndex();
    if (chosen < 0) return;
    gBackUpFile = names_[static_cast<std::size_t>(chosen)];
    Unload();
}

void frmBackUpFile::cmdCancel_Click()
{
    gBackUpFile.clear();
    Unload();
}

}
