// The main window with its events: each control and menu entry meets its
// command here, and the window its start, its clock and its end.
//
// Every event procedure reports a failure under its own name and goes on with
// its next statement, so that the closing steps of each are always reached.
#pragma once
#include "app/guard.h"
#include "filter/frm_filter.h"
#include "friend/frm_friend.h"
#include "window/frm_tolvek.h"

namespace tolvek {

class frmTolvekEvents : public frmTolvek {
protected:
    void buildControls() override;
    void Form_Initialize() override;
    void Form_Unload() override;

private:
    void connectEvents();
    void connectStoreMenus();
    void connectFriendMenus();
    void connectOtherMenus();
    void comEnd_Click();
    void memEnd_Click();
    void memHelp_Click();
    void lstSubject_RightButton();
    void Timer1_Timer();

    void askForSettings(const ResumeNext& on);
    void clearPanes(const ResumeNext& on);

    // Kept, for what they remember from opening to opening.
    frmFilter filterEditor_;
    frmFriend friendEditor_;
};

}
