// The main window with all its events and an archive of its own, with the settings of a
// known user.
#pragma once
#include "platform/forms/events.h"
#include "shell/frm_tolvek_events.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"

namespace tolvek::test {

class EventsWindow : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        givenSettings("[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n");
    }
    void TearDown() override
    {
        gUnloading = -1; // the window closes without the exit's steps
        form.Unload();
        gUnloading = 0;
        gBusyFlag = 0;
        gBackUpDisp = 0;
        gDisplayType = 0;
        ArchiveFixture::TearDown();
    }

    void givenSettings(const std::string& text) { writeBytes(file("TOLVEK.ini"), text); }
    static void choose(MenuEntry& entry)
    {
        entry.action().trigger();
        rethrowKept();
    }

    frmTolvekEvents form;
};

}
