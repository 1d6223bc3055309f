// Every form of the program in turn, shown over an archive that fills its lists.
#pragma once
#include "dialogs/frm_about.h"
#include "dialogs/frm_backup_file.h"
#include "dialogs/frm_dir_sel.h"
#include "dialogs/frm_mail_read_opt.h"
#include "dialogs/frm_option.h"
#include "dialogs/frm_splash.h"
#include "events_window.h"
#include "filter/frm_filter.h"
#include "filter/frm_filter_dsp_chenge.h"
#include "friend/frm_friend.h"
#include "platform/runtime/do_events.h"

namespace tolvek::test {

class EveryForm : public EventsWindow {
protected:
    void SetUp() override
    {
        EventsWindow::SetUp();
        prepareApplication();
        execute(Statement{u"INSERT INTO tblSearch_Addresses VALUES( 'hanako@example.jp' )"});
        store(mail(u"hanako@example.jp", u"taro@example.jp"));
        addFriend(u"hanako@example.jp", u"花子", u"モモ");
        addFriend(u"jiro@example.jp", u"次郎", u"ポチ");
        addFilter(1, 1, 0, u"旅行", u"旅");
        addFilter(2, 1, 0, u"学校", u"学");
        writeBytes(file("Tolvek_20000215.Mdb"), "a backup");
    }

    // Each form is shown, looked at and unloaded before the next one.
    void atEveryForm(const std::function<void(Form&)>& look)
    {
        lookAt<frmSplash>(look);
        form.Show();
        form.Timer1->setEnabled(false);
        form.lstNameOrAddr->setListIndex(0);
        lookAt(form, look);
        tblFilter_Get();
        lookAt<frmFilter>(look);
        tblFilter_Get();
        lookAt<frmFilterDspChenge>(look);
        gFriendSort = 1;
        lookAt<frmFriend>(look);
        lookAt<frmOption>(look);
        lookAt<frmDir_Sel>(look);
        lookAt<frmMailReadOpt>(look);
        frmBackUpFile backups(form);
        lookAt(backups, look);
        lookAt<frmAbout>(look);
    }

private:
    template <class Kind> static void lookAt(const std::function<void(Form&)>& look)
    {
        Kind shown;
        lookAt(shown, look);
    }
    static void lookAt(Form& shown, const std::function<void(Form&)>& look)
    {
        SCOPED_TRACE(toUtf8(shown.Name()));
        shown.Show();
        shown.window()->activateWindow();
        DoEventsNow();
        look(shown);
        if (shown.Name() != u"frmTolvek") shown.Unload();
    }
};

}
