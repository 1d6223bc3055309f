// The program controlled by a script: driven_program FOLDER SCENARIO.
//
// FOLDER is the program's folder, with settings that choose one mail box. The converter
// makes a box of kMails mails. Boxes are written to the output and answered with OK.
// Scenarios:
//   read        reads the box, then closes the window
//   close N     reads, and closes the window while mail N is being read
//   close data  the same while the data are being updated
//   dialog      closes the window while the box selection is shown
//   hold N      reads, reports mail N, and stays there to be killed
//   idle        starts, reports it, and stays
//   start       starts and closes the window
#include "app/converter_library.h"
#include "app/program_end.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "dialogs/frm_splash.h"
#include "platform/dao/alone.h"
#include "platform/forms/events.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/process.h"
#include "shell/frm_tolvek_events.h"
#include "shell/tolvek_main.h"
#include "store/database_files.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <fstream>
#include <string>

namespace {

using namespace tolvek;

constexpr int kMails = 3000;

void say(const std::string& word)
{
    std::puts(word.c_str());
    std::fflush(stdout);
}

void writeTempFile(const Text& path)
{
    std::ofstream file(nativePath(path), std::ios::binary);
    file << "\"<Start>\"\r\n";
    for (int i = 0; i < kMails; ++i) {
        char clock[16];
        std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", i / 3600, i / 60 % 60, i % 60);
        file << "From:<sender" << i % 50 << "@example.jp>\r\nTo:<taro@example.jp>\r\nSubject:mail "
             << i << "\r\nDate:Tue, 15 Feb 2000 " << clock << " +0900\r\nMail:\r\ntext of mail "
             << i << "\r\nanother line\r\n<End>\r\n";
    }
}

void useBoxOfManyMails()
{
    ConverterLibrary library;
    library.Tolvek_Edit = [](const Text&, const Text&, const Text& temp, Int16& count,
                             Int16& status) {
        writeTempFile(temp);
        count = kMails;
        status = 0;
    };
    library.TolvekFriend_Edit = [](const Text&, const Text&, Int16& count, Int16&) { count = 0; };
    library.Mail_StrChange = [](const Text& source, Text& result, Int16& length) {
        result = source;
        length = static_cast<int>(source.size());
    };
    hooks::setConverterLibrary(library);
}

// Watches the program at each turn of its event loop, like its user.
class User {
public:
    User(frmTolvek& window, std::string scenario, std::string moment)
        : window_(window), scenario_(std::move(scenario)), moment_(std::move(moment))
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
        timer_.start(0);
    }

private:
    void look()
    {
        if (window_.Visible() && !begun_) begin();
        if (QWidget* dialog = QApplication::activeModalWidget()) atDialog(*dialog);
        if (scenario_ != "read" && begun_ && atMoment()) act();
        if (reading_ && gBusyFlag == 0 && window_.comMailRead->Enabled()) afterReading();
        reading_ = reading_ || gBusyFlag == -1;
    }
    void begin()
    {
        begun_ = true;
        if (scenario_ == "idle")
            say("idle");
        else if (scenario_ == "start")
            window_.window()->close();
        else
            // The click returns when the read is over, and a timer doesn't tick inside
            // its own tick.
            QTimer::singleShot(0, [this] { window_.comMailRead->click(); });
    }
    void atDialog(QWidget& dialog)
    {
        if (scenario_ == "dialog")
            window_.window()->close();
        else if (auto* ok = dialog.findChild<CommandButton*>(QStringLiteral("cmbMail_Ok")))
            ok->click();
    }
    bool atMoment() const
    {
        if (moment_ == "data") return gStatusLines[2] == u"　　　更新しています。";
        return gStatusLines[5].starts_with(u"   " + fromUtf8(moment_) + u" / ") ||
               atOrBehind(toUtf8(gStatusLines[5]));
    }
    bool atOrBehind(const std::string& progress) const
    {
        return !moment_.empty() && !progress.empty() && std::stoi(progress) >= std::stoi(moment_);
    }
    void act()
    {
        if (scenario_ == "close") window_.window()->close();
        if (scenario_ != "hold") return;
        say("hold");
        for (;;)
            sleepMilliseconds(1000);
    }
    void afterReading()
    {
        say("read to the end");
        window_.window()->close();
    }

    frmTolvek& window_;
    std::string scenario_, moment_;
    bool begun_ = false;
    bool reading_ = false;
    QTimer timer_;
};

}

int main(int argc, char** argv)
{
    if (argc < 3) return 2;
    QApplication application(argc, argv);
    prepareApplication();
    setBeforeWait(putAllAtRest);
    setEndFunction([] { endProgram(); });
    setAppPath(fromUtf8(argv[1]));
    const SingleInstance instance("Tolvek", argv[1], existingPath(liveDatabasePath()));
    App.PrevInstance = instance.isFirst() ? 0 : -1;
    hooks::setMsgBox([](const MsgBoxRequest& box) {
        say("box " + toUtf8(box.text));
        return MsgAnswer::Ok;
    });
    useBoxOfManyMails();
    frmSplash splash;
    frmTolvekEvents window;
    const User user(window, argv[2], argc > 3 ? argv[3] : "");
    Main(splash, window);
    return runApplication();
}
