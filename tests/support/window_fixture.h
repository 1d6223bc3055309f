// An archive with the main window shown on the (offscreen) screen, its lists connected
// to their click events, and boxes that report failures.
#pragma once
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "browse/subject_list.h"
#include "platform/forms/events.h"
#include "platform/runtime/do_events.h"
#include "support/archive_fixture.h"
#include "window/frm_tolvek.h"

namespace tolvek::test {

class WindowFixture : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gDisplayType = 0;
        gBackUpDisp = 0;
        gBusyFlag = 0;
        gStatusColorFlag = 0;
        gMailTextFontSize = 10;
        form.Show();
        onEvent(form.lstNameOrAddr, &ListBox::Click, [this] { lstNameOrAddr_Click(form); });
        onEvent(form.lstSubject, &ListBox::Click, [this] { lstSubject_Click(form); });
        onEvent(form.lblNameOrAddr, &Label::Click, [this] { lblNameOrAddr_Click(form); });
        onEvent(form.memNameOrAddr, &MenuEntry::Click, [this] { memNameOrAddr_Click(form); });
        DoEventsNow();
    }

    // Expects the box of a failed database routine.
    void expectDbReport(TextView routine, int number, TextView name = {})
    {
        boxes.expect(u"エラー番号： " + decimal(number) + Text(kCrLf) + u"（" +
                         errorText(number, name) + u"）",
                     MsgAnswer::Ok, u"エラーメッセージ (" + Text(routine) + u")");
    }

    static std::vector<Text> entries(const ListBox& list)
    {
        std::vector<Text> texts;
        for (int i = 0; i < list.ListCount(); ++i)
            texts.push_back(list.List(i));
        return texts;
    }

    // Stores `count` mails of one sender, a second apart, in one transaction.
    static void storeMany(int count, const Text& sender)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int i = 0; i < count; ++i) {
                Statement sql{
                    u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                    u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, "
                    u"tblTolvek_RcvName, "
                    u"tblTolvek_RcvAdd, tblTolvek_Subject ) VALUES( '20000215', '101112', "};
                sql << i << u", " << (i % 2 == 1) << u", '花', '" << sender
                    << u"', '太', 'b@example.jp', '件名' )";
                opened.Execute(sql, dbFailOnError);
            }
        });
        opened.Close();
    }

    frmTolvek form;
};

}
