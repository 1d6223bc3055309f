// A second press of every control of every form, before the first one's command has
// begun and at each of its yields, leaves the same as one press, or as two in a row.
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "dialogs/frm_about.h"
#include "dialogs/frm_backup_file.h"
#include "dialogs/frm_dir_sel.h"
#include "dialogs/frm_mail_read_opt.h"
#include "dialogs/frm_option.h"
#include "filter/filter_results.h"
#include "platform/forms/input_box.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "platform/system/volumes.h"
#include "pressed_program.h"
#include "shell/win_help.h"
#include "store/search_tables.h"
#include "support/fault_injection.h"
#include "support/sent_keys.h"

#include <set>

namespace tolvek::test {
namespace {

constexpr const char* kMain = "frmTolvek";

using Steps = std::deque<Press>; // that lead to the form of the presses

const Steps kSelected{{kMain, "lstNameOrAddr"}};
const std::vector<Way> kButton{Way::Mouse, Way::Key, Way::Call};
const std::vector<Way> kList{Way::Mouse, Way::Key};
const std::vector<Way> kClosing{Way::Mouse, Way::Call};
const std::vector<Way> kEntry{Way::Call};

class SecondPressTest : public ArchiveFixture {
protected:
    SecondPressTest() : kept(folder.path()) {}
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        hooks::setClock([] { return DateTime{2000, 2, 25, 12, 0, 0}; });
        setEndFunction([] { throw ProgramEnd{0}; });
        hooks::setMsgBox([this](const MsgBoxRequest& box) { return answer(box); });
        hooks::setInputBox([](const InputBoxRequest& box) { return box.defaultText; });
        setHelpViewer([this](const HelpRequest&) { return note("help"), true; });
        sent.watch([this](const Text& keys) {
            if (!keys.starts_with(u"activate")) note("keys " + toUtf8(keys));
        });
        hooks::setVolumeFolders({folder.path().string()});
        givenPostPet();
        givenContents();
        kept.keep();
    }
    void TearDown() override
    {
        hooks::setYield({});
        hooks::setVolumeFolders({});
        setHelpViewer({});
        hooks::setInputBox({});
        setEndFunction({});
        hooks::setClock({});
        gDisplayType = 0;
        gBackUpDisp = 0;
        gBusyFlag = 0;
        gFilterRule = {};
        gNonCopyRule = {};
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        gFilterRulesWhole = true;
        ArchiveFixture::TearDown();
    }

    void givenPostPet(const std::string& display = "0") const
    {
        const Path home = file("PostPet");
        std::filesystem::create_directories(home / "受信フォルダ");
        writeBytes(home / "PostPet20.exe", "#!/bin/sh\nexit 0\n");
        std::filesystem::permissions(home / "PostPet20.exe", std::filesystem::perms::owner_all);
        writeBytes(file("TOLVEK.ini"),
                   "[PostPet Mail Option]\r\nPostPet Dir=" + home.string() +
                       "\r\nMy Mail Addr=taro@example.jp\r\nDisplay Type=" + display +
                       "\r\n[Mail Options]\r\nReciev Mail Read "
                       "Option=1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n");
        converterLibrary().Tolvek_Edit = [](const Text&, const Text&, const Text& temp,
                                            Int16& count, Int16& status) {
            writeBytes(nativePath(temp),
                       "\"<Start>\"\r\nFrom:<shiro@example.jp>\r\nTo:<taro@example.jp>\r\nSubject:"
                       "new\r\nDate:Tue, 22 Feb 2000 10:00:00 +0900\r\nMail:\r\ntext\r\n<End>\r\n");
            count = 1;
            status = 0;
        };
    }
    void givenContents()
    {
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
        store(mail(u"jiro@example.jp", u"taro@example.jp", u"second", u"20000216"));
        store(mail(u"saburo@example.jp", u"taro@example.jp", u"third", u"20000217"));
        addFriend(u"hanako@example.jp", u"花子", u"モモ", u"くま", 12);
        addFriend(u"jiro@example.jp", u"次郎", u"クロ", u"ねこ", 3);
        addFilter(10, 2, 0, u"花子から", u"hanako@example.jp");
        addFilter(20, 3, 0, u"次郎から", u"jiro@");
        addFilter(30, 3, 1, u"読まない", u"ad@");
        edSearch_Addr();
        edSearch_Name();
        DBEngine::CompactDatabase(gDbPath, joinPath(appPath(), u"old.Mdb"));
    }
    MsgAnswer answer(const MsgBoxRequest& box)
    {
        note("box " + toUtf8(box.title) + ": " + toUtf8(box.text));
        return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
    }
    void note(const std::string& line)
    {
        if (program) program->log(line);
    }

    // Returns what one run leaves; each starts with the same files.
    std::string leaves(const Plan& plan, int* yields = nullptr)
    {
        kept.putBack();
        program = std::make_unique<PressedProgram>();
        program->plan = plan;
        const std::string left = program->run();
        if (yields) *yields = program->yields();
        program.reset();
        sent.take();
        return left;
    }
    void expectOneOf(const std::set<std::string>& allowed, const std::string& left,
                     const std::string& when)
    {
        if (allowed.contains(left)) return;
        ADD_FAILURE() << when << "\n--- left:\n"
                      << left << "\n--- instead of:\n"
                      << *allowed.begin();
    }
    // Presses `first` after its path, and at every moment of it one of `seconds`, in
    // rotation. A build with sanitizers takes every third moment.
    void pressAtEachMoment(const Steps& path, const Press& first, const std::vector<Press>& seconds)
    {
        Plan plan{path, {}, 0};
        plan.steps.push_back(first);
        int yields = 0;
        std::set<std::string> allowed{leaves(plan, &yields)};
        for (const Press& second : seconds) {
            Plan inARow = plan;
            inARow.steps.push_back(second);
            allowed.insert(leaves(inARow));
        }
        std::size_t turn = 0;
        for (plan.moment = 0; plan.moment <= yields; plan.moment += kSparse) {
            plan.second = seconds[turn++ % seconds.size()];
            expectOneOf(allowed, leaves(plan),
                        first.control + ", then " + plan.second->control + " at yield " +
                            std::to_string(plan.moment) + " of " + std::to_string(yields));
        }
    }
    void pressTwice(const Steps& path, const Press& press, const std::vector<Way>& ways)
    {
        std::vector<Press> seconds;
        for (const Way way : ways)
            seconds.push_back({press.form, press.control, way});
        pressAtEachMoment(path, press, seconds);
    }
    // Every control of a dialog that can be pressed.
    template <class Dialog, class... Arguments>
    void pressAllTwice(const Steps& path, const Arguments&... arguments)
    {
        std::vector<std::pair<Press, std::vector<Way>>> all;
        {
            Dialog dialog(arguments...);
            dialog.Load();
            const std::string form = toUtf8(dialog.Name());
            all.emplace_back(Press{form, kCloseBox}, kClosing);
            for (const QWidget* widget : dialog.window()->template findChildren<QWidget*>())
                if (const auto& ways = waysOf(*widget); !ways.empty())
                    all.emplace_back(Press{form, widget->objectName().toStdString()}, ways);
        }
        for (const auto& [press, ways] : all)
            pressTwice(path, press, ways);
    }
    static std::vector<Way> waysOf(const QWidget& widget)
    {
        if (qobject_cast<const CommandButton*>(&widget)) return kButton;
        if (qobject_cast<const ListBox*>(&widget) || qobject_cast<const Grid*>(&widget))
            return kList;
        if (qobject_cast<const OptionButton*>(&widget) || qobject_cast<const CheckBox*>(&widget))
            return {Way::Mouse};
        return {};
    }
    KeptFolder kept;
    SentKeys sent;
    std::unique_ptr<PressedProgram> program;
};

// ---- the main window ----

struct Command {
    const char* name;
    std::vector<Way> ways;
};

const Command kCommands[] = {{"comMailRead", kButton},
                             {"cmdAddrDel", kButton},
                             {"comMailDel", kButton},
                             {"comSendMail", kButton},
                             {"comEnd", kButton},
                             {"lstNameOrAddr", kList},
                             {"lstSubject", kList},
                             {"lblNameOrAddr", {Way::Mouse}},
                             {"memExport", kEntry},
                             {"memInport", kEntry},
                             {"memDBEdit", kEntry},
                             {"memEnd", kEntry},
                             {"memNomalDisp", kEntry},
                             {"memBackUp_FileEdit", kEntry},
                             {"memBackUp_FileSelect", kEntry},
                             {"memFriend_F", kEntry},
                             {"memFriend_P", kEntry},
                             {"memFriend_A", kEntry},
                             {"memAddressAdd", kEntry},
                             {"memFriendEd", kEntry},
                             {"memFilter", kEntry},
                             {"memFilterGo", kEntry},
                             {"memEnv", kEntry},
                             {"memNameOrAddr", kEntry},
                             {"memHelp", kEntry},
                             {"memVar", kEntry}};

std::string nameOf(const testing::TestParamInfo<Command>& info)
{
    return info.param.name;
}

class SecondPressMainWindowTest : public SecondPressTest,
                                  public testing::WithParamInterface<Command> {};

TEST_P(SecondPressMainWindowTest, LeavesWhatOnePressLeavesOrTwoInARow)
{
    pressTwice(kSelected, {kMain, GetParam().name}, GetParam().ways);
}

INSTANTIATE_TEST_SUITE_P(EachCommand, SecondPressMainWindowTest, testing::ValuesIn(kCommands),
                         nameOf);

TEST_F(SecondPressTest, EveryCommandOfTheMainWindowIsAmongThem)
{
    std::set<std::string> named, there{"lblNameOrAddr"};
    for (const Command& command : kCommands)
        named.insert(command.name);
    frmTolvek window;
    window.Load();
    for (const QWidget* widget : window.client().findChildren<QWidget*>())
        if (!waysOf(*widget).empty()) there.insert(widget->objectName().toStdString());
    for (const MenuEntry* entry : window.window()->findChildren<MenuEntry*>())
        if (!entry->menu() && entry->Caption() != u"-") there.insert(toUtf8(entry->Name()));
    EXPECT_EQ(named, there);
}

TEST_F(SecondPressTest, TheCloseBox)
{
    pressTwice({}, {kMain, kCloseBox}, kClosing);
}

// A loading dialog isn't modal yet; writing a mail to a friend and asking for a name
// leave the commands enabled.
const Command kBeginning[] = {{"memFilter", {}},     {"memFriend_A", {}}, {"memEnv", {}},
                              {"memAddressAdd", {}}, {"memFilterGo", {}}, {"comSendMail", {}},
                              {"lstNameOrAddr", {}}};

class SecondPressOtherTest : public SecondPressTest, public testing::WithParamInterface<Command> {};

TEST_P(SecondPressOtherTest, OfAnotherCommandWaitsForTheFirstOne)
{
    pressAtEachMoment(kSelected, {kMain, GetParam().name},
                      {{kMain, "comEnd"},
                       {kMain, "memEnd", Way::Call},
                       {kMain, "memFilter", Way::Call},
                       {kMain, "memFriend_F", Way::Call},
                       {kMain, "lstNameOrAddr"},
                       {kMain, "comMailDel", Way::Call}});
}

INSTANTIATE_TEST_SUITE_P(EachCommand, SecondPressOtherTest, testing::ValuesIn(kBeginning), nameOf);

// ---- the dialogs ----

TEST_F(SecondPressTest, TheFilterEditor)
{
    pressAllTwice<frmFilter>({{kMain, "memFilter"}});
}

// Left by Cancel it lists the filters again, with the commands on.
TEST_F(SecondPressTest, TheCancelOfTheFilterEditorWithTheFiltersListed)
{
    givenPostPet("3");
    kept.keep();
    pressAtEachMoment({{kMain, "memFilter"}}, {"frmFilter", "comCancel"},
                      {{kMain, "lstNameOrAddr"},
                       {kMain, "memFilter", Way::Call},
                       {kMain, "lblNameOrAddr"},
                       {kMain, "comEnd", Way::Call}});
}

TEST_F(SecondPressTest, TheDisplayOrder)
{
    const Steps path{{kMain, "memFilter"}, {"frmFilter", "cmdDspChenge"}};
    pressAllTwice<frmFilterDspChenge>(path);
    Steps allMoved = path;
    allMoved.push_back({"frmFilterDspChenge", "cmdAllUp"});
    for (const char* button : {"cmdApply", "cmdOK", "cmdCancel"})
        pressTwice(allMoved, {"frmFilterDspChenge", button}, kButton);
}

TEST_F(SecondPressTest, TheFriendEditor)
{
    pressAllTwice<frmFriend>({{kMain, "memFriend_A"}});
}

TEST_F(SecondPressTest, TheFriendEditorWithARowPicked)
{
    for (const char* button : {"cmdSndMail", "cmdFriendUp", "cmdFriendDel"})
        pressTwice({{kMain, "memFriend_A"}, {"frmFriend", "grdFriend"}}, {"frmFriend", button},
                   kButton);
}

TEST_F(SecondPressTest, TheSettings)
{
    hooks::setFontDialog([](FontDialogFields&) { return true; });
    pressAllTwice<frmOption>({{kMain, "memEnv"}});
    hooks::setFontDialog({});
}

TEST_F(SecondPressTest, TheFolderChooser)
{
    pressAllTwice<frmDir_Sel>({{kMain, "memEnv"}, {"frmOption", "cmbOpenPostPet"}});
}

TEST_F(SecondPressTest, TheMailBoxSelection)
{
    pressAllTwice<frmMailReadOpt>({{kMain, "comMailRead"}});
}

TEST_F(SecondPressTest, TheBackUpFiles)
{
    frmTolvek window;
    pressAllTwice<frmBackUpFile>({{kMain, "memBackUp_FileSelect"}}, window);
}

TEST_F(SecondPressTest, TheVersion)
{
    pressAllTwice<frmAbout>({{kMain, "memVar"}});
}

TEST_F(SecondPressTest, AnotherButtonOfTheFilterEditor)
{
    const std::vector<Press> others{{"frmFilter", "comOk"},
                                    {"frmFilter", "comCancel", Way::Call},
                                    {"frmFilter", "cmdDspChenge", Way::Call},
                                    {"frmFilter", kCloseBox},
                                    {kMain, "comEnd", Way::Call}};
    for (const char* first : {"comOk", "comCancel", "cmdDspChenge"})
        pressAtEachMoment({{kMain, "memFilter"}}, {"frmFilter", first}, others);
}

TEST_F(SecondPressTest, AnotherButtonOfTheDisplayOrder)
{
    const std::vector<Press> inOrder{{"frmFilterDspChenge", "cmdOK"},
                                     {"frmFilterDspChenge", "cmdApply", Way::Call},
                                     {"frmFilterDspChenge", "cmdCancel", Way::Call},
                                     {"frmFilterDspChenge", kCloseBox},
                                     {kMain, "comEnd", Way::Call}};
    for (const char* first : {"cmdAllUp", "cmdApply", "cmdOK", "cmdCancel"})
        pressAtEachMoment({{kMain, "memFilter"},
                           {"frmFilter", "cmdDspChenge"},
                           {"frmFilterDspChenge", "cmdAllUp"}},
                          {"frmFilterDspChenge", first}, inOrder);
}

}
}
