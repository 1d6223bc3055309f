// The main window with its events: connects each control and menu entry to its command,
// and handles the window's start, clock and end.
//
// Every event procedure reports a failure under its own name and goes on with its next
// statement, so its final steps are always reached.
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
    void lstSubject_RightButton(const QPoint& pos);
    void Timer1_Timer();

    void askForSettings(const ResumeNext& on);
    void clearPanes(const ResumeNext& on);

    // Members, so that they remember their values between openings.
    frmFilter filterEditor_;
    frmFriend friendEditor_;
};

}
