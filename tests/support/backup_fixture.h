// A window with an archive of two mails, a friend and two rules, on 25 February 2000,
// and with the three entries of the backup menu connected.
#pragma once
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/test_hooks.h"
#include "shell/backup_commands.h"
#include "store/search_tables.h"
#include "support/modal_script.h"
#include "support/report_list.h"
#include "support/screen_driver.h"
#include "support/window_fixture.h"

#include <map>

namespace tolvek::test {

inline constexpr TextView kMainCaption = u"PostPet Mail 表示";
using Texts = std::vector<Text>;

inline constexpr TextView kBackUpQuestion = u"メールをバックします。\r\n     よろしいでしょうか？";

class BackUpTest : public WindowFixture {
protected:
    void SetUp() override
    {
        WindowFixture::SetUp();
        hooks::setClock([] { return DateTime{2000, 2, 25, 12, 0, 0}; });
        onEvent(form.memBackUp_FileEdit, &MenuEntry::Click,
                [this] { memBackUp_FileEdit_Click(form); });
        onEvent(form.memBackUp_FileSelect, &MenuEntry::Click,
                [this] { memBackUp_FileSelect_Click(form); });
        onEvent(form.memNomalDisp, &MenuEntry::Click, [this] { memNomalDisp_Click(form); });
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
        store(mail(u"jiro@example.jp", u"taro@example.jp", u"second", u"20000216"));
        addFriend(u"hanako@example.jp", u"花子", u"モモ");
        addFilter(10, 2, 0, u"花子から", u"hanako@example.jp");
        addFilter(20, 3, 1, u"読まない", u"ad@");
        tblFilter_Get();
        tblFilterData_Sel();
        edSearch_Addr();
        edSearch_Name();
        dspSelData(form);
    }
    void TearDown() override
    {
        hooks::setClock({});
        form.Unload();
        gBackUpDisp = 0;
        gBusyFlag = 0;
        gDisplayType = 0;
        gFilterRule = {};
        gNonCopyRule = {};
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        WindowFixture::TearDown();
    }

    static void choose(const MenuEntry* entry)
    {
        entry->action().trigger();
        rethrowKept();
    }
    void backUp(MsgAnswer answer = MsgAnswer::Yes)
    {
        boxes.expect(kBackUpQuestion, answer, u"Tolvek");
        choose(form.memBackUp_FileEdit);
    }
    // Picks the file in the dialog by its row.
    void view(const Text& name)
    {
        const ModalScript dialog("frmBackUpFile", [&](QWidget& shown) {
            auto& list = controlOf<ListBox>(shown, "lstBackUpFile");
            for (int row = 0; row < list.ListCount(); ++row)
                if (list.List(row) == name) clickEntry(list, row);
            EXPECT_EQ(list.Text(), name);
            press(shown, "cmdOK");
        });
        choose(form.memBackUp_FileSelect);
    }
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const std::string& name : fileNames(folder.path()))
            all[name] = readBytes(file(name));
        return all;
    }
    Text pathOf(TextView name) const { return joinPath(appPath(), name); }
    static Texts subjectsIn(const Text& path)
    {
        return column(Statement{u"SELECT tblTolvek_Subject FROM tblTolvek"}, 0, path);
    }
    // Everything that a command may disable, in switching order.
    std::string commandsOff() const
    {
        const std::pair<const char*, bool> all[] = {
            {"comEnd ", form.comEnd->Enabled()},
            {"comMailRead ", form.comMailRead->Enabled()},
            {"cmdAddrDel ", form.cmdAddrDel->Enabled()},
            {"comMailDel ", form.comMailDel->Enabled()},
            {"memFile ", form.memFile->Enabled()},
            {"memDBSupport ", form.memDBSupport->Enabled()},
            {"memOption ", form.memOption->Enabled()},
            {"memHelp_Top ", form.memHelp_Top->Enabled()},
            {"comSendMail ", form.comSendMail->Enabled()},
            {"memBackUp ", form.memBackUp->Enabled()},
            {"memBackUp_FileEdit ", form.memBackUp_FileEdit->Enabled()},
            {"memNomalDisp ", form.memNomalDisp->Enabled()},
            {"memBackUp_FileSelect ", form.memBackUp_FileSelect->Enabled()},
            {"lstSubject ", form.lstSubject->Enabled()},
            {"lstNameOrAddr ", form.lstNameOrAddr->Enabled()},
            {"lblNameOrAddr ", form.lblNameOrAddr->Enabled()},
        };
        std::string off;
        for (const auto& [name, enabled] : all)
            if (!enabled) off += name;
        return off;
    }

    const std::string kOffOnABackUp =
        "comMailRead cmdAddrDel comMailDel memDBSupport memOption memBackUp_FileEdit ";
    const std::string kOffAfterAFailure =
        "comEnd comMailRead cmdAddrDel comMailDel memFile memOption memHelp_Top comSendMail "
        "memBackUp memBackUp_FileEdit lstSubject lstNameOrAddr lblNameOrAddr ";
    const Texts kBothSubjects{u"first", u"second"};
    const Texts kAddresses{u"hanako@example.jp", u"jiro@example.jp", u"taro@example.jp"};
};

}
