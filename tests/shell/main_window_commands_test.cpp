// Each entry and button of the real main window runs its own command, recognised by the
// first thing it shows.
#include "events_window.h"
#include "friend/frm_friend.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/process_list.h"
#include "platform/system/test_hooks.h"
#include "shell/win_help.h"
#include "store/search_tables.h"
#include "support/screen_driver.h"
#include "support/yield_watch.h"

#include <QMenuBar>

namespace tolvek::test {
namespace {

struct Command {
    const char* way;  // captions from the bar down, or a control's name
    const char* sign; // the beginning of what is shown first
};

void PrintTo(const Command& command, std::ostream* out)
{
    *out << command.way;
}

class MainWindowCommandsTest : public EventsWindow, public ::testing::WithParamInterface<Command> {
protected:
    void SetUp() override
    {
        EventsWindow::SetUp();
        gPostPetDir = u"/post";
        givenSettings("[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n"
                      "PostPet Dir=/post\r\n");
        hooks::setProcessLister([] {
            return std::vector<RunningProgram>{{1, "/post/PostPet20.exe"}};
        });
        setHelpViewer([this](const HelpRequest&) { return see("help"); });
        writeBytes(file("Tolvek.hlp"), "help");
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first", u"20000215"));
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"second", u"20000216"));
        edSearch_Addr();
        form.Show();
        clickEntry(*form.lstNameOrAddr, 0);
        showABackUp();
        watch();
    }
    void TearDown() override
    {
        hooks::setYield({});
        setHelpViewer({});
        hooks::setProcessLister({});
        gPostPetPid = 0;
        gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
        EventsWindow::TearDown();
    }

    // Displays a backup as far as paths are concerned, with every command enabled.
    void showABackUp()
    {
        gDbPath = joinPath(appPath(), u"Tolvek_20000101.Mdb");
        std::filesystem::copy_file(file("Tolvek.Mdb"), file("Tolvek_20000101.Mdb"));
    }
    bool see(std::string sign)
    {
        if (seen.empty()) seen = std::move(sign);
        return true;
    }
    void watch()
    {
        hooks::setMsgBox([this](const MsgBoxRequest& box) {
            see("box " + toUtf8(box.title) + ": " + toUtf8(box.text));
            if (box.buttons == MsgButtons::YesNo) return MsgAnswer::No;
            return box.buttons == MsgButtons::OkCancel ? MsgAnswer::Cancel : MsgAnswer::Ok;
        });
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] { closeDialog(); });
        timer.start(0);
        hooks::setYield([this] { lookAtState(); });
    }
    void closeDialog()
    {
        QWidget* const shown = QApplication::activeModalWidget();
        if (!shown) return;
        const std::string sort = gFriendSort != 0 ? " " + std::to_string(int(gFriendSort)) : "";
        see("form " + shown->objectName().toStdString() + sort);
        shown->close();
    }
    void lookAtState()
    {
        if (gBusyFlag == -1) see("status " + toUtf8(gStatusLines[0]) + toUtf8(gStatusLines[1]));
        if (gDbPath.ends_with(u"Tolvek.Mdb")) see("the live store");
        if (gDisplayType == 1) see("the names");
        if (form.lblRecCount->Caption() == u"表示件数　：　1 / 2 件") see("the first mail");
    }
    static QAction& below(const QList<QAction*>& entries, const QString& caption)
    {
        for (QAction* entry : entries)
            if (entry->text() == caption) return *entry;
        throw std::logic_error("no entry " + caption.toStdString());
    }
    QAction& entryAt(const QString& way)
    {
        const QStringList captions = way.split(u'/');
        QAction* entry = &below(form.menuBar().actions(), captions.front());
        for (const QString& caption : captions.mid(1))
            entry = &below(entry->menu()->actions(), caption);
        return *entry;
    }
    void choose(const char* way)
    {
        const QString name = QString::fromUtf8(way);
        if (name == "lstNameOrAddr")
            clickEntry(*form.lstNameOrAddr, 0);
        else if (name == "lstSubject")
            clickEntry(*form.lstSubject, 0);
        else if (auto* control = form.window()->findChild<QWidget*>(name))
            click(*control);
        else
            entryAt(name).trigger();
        rethrowKept();
    }

    std::string seen;
    QTimer timer;
};

TEST_P(MainWindowCommandsTest, LeadsToItsOwn)
{
    try {
        choose(GetParam().way);
        lookAtState();
    } catch (const ProgramEnd&) {
        see("end");
    }
    EXPECT_TRUE(seen.starts_with(GetParam().sign)) << seen;
}

INSTANTIATE_TEST_SUITE_P(
    EachEntryAndButton, MainWindowCommandsTest,
    ::testing::Values(
        Command{"comMailRead", "form frmMailReadOpt"},
        Command{"cmdAddrDel", "box Tolvek: 選択されているアドレスのメールを削除します"},
        Command{"comMailDel", "box Tolvek: 選択されているメールを削除します"},
        Command{"comSendMail", "box Tolvek: PostPetのメイン画面以外が開いていると"},
        Command{"comEnd", "end"}, Command{"lblNameOrAddr", "the names"},
        Command{"lstNameOrAddr", "status データベースの　　内容を読み込んでいます。"},
        Command{"lstSubject", "the first mail"},
        Command{"ファイル/ＤＢサポート/エクスポート", "box Tolvek: Ｔｏｌｖｅｋ　の　データを退避"},
        Command{"ファイル/ＤＢサポート/インポート",
                "box Tolvek: Ｔｏｌｖｅｋ　の　ＤＢ　へ　セーブデータから"},
        Command{"ファイル/ＤＢサポート/ＤＢ再作成",
                "box Tolvek: ＰｏａｔＰｅｔ　Ｍａｉｌ　ＤＢ　の　再作成を行います。"},
        Command{"ファイル/終了", "end"},
        Command{"バックアップ/ファイル作成", "box Tolvek: メールをバックします。"},
        Command{"バックアップ/通常表示", "the live store"},
        Command{"バックアップ/ファイル 選択", "form frmBackUpFile"},
        Command{"オプション/おともだち帳/おともだち順に表示", "form frmFriend 2"},
        Command{"オプション/おともだち帳/Pet順", "form frmFriend 3"},
        Command{"オプション/おともだち帳/ﾒｰﾙｱﾄﾞﾚｽ順", "form frmFriend 1"},
        Command{"オプション/おともだち帳に追加", "box おともだち登録: おともだち帳に登録して"},
        Command{"オプション/名前 の 再設定", "status ともだち帳から　名前の再設定を行っています。"},
        Command{"オプション/フィルター設定", "form frmFilter"},
        Command{"オプション/フィルター実行", "status 　振り分け処理を行っています。"},
        Command{"オプション/環境設定", "form frmOption"},
        Command{"オプション/表示切替え", "the names"}, Command{"ヘルプ/Tolvek ヘルプ", "help"},
        Command{"ヘルプ/バージョン情報", "form frmAbout"}));

}
}
