// One run of the real main window and its dialogs, operated by a user from start to
// end; run() returns everything it leaves behind as one text:
//
//     PressedProgram program;
//     program.plan = {{{"frmTolvek", "memFilter"}, {"frmFilter", "comOk"}}};
//     program.plan.second = Press{"frmFilter", "comOk"};
//     program.plan.moment = 3;           // at the third yield after the last step
//     const std::string left = program.run();
//
// The user acts when the program waits for him, never at a yield; only the second press
// comes at its moment. Dialogs beyond the plan are answered by their OK. At each yield
// of the last step the commands are disabled, or input is held, or a dialog is shown.
#pragma once
#include "filter/filter_rules.h"
#include "friend/frm_friend.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/test_hooks.h"
#include "shell/frm_tolvek_events.h"
#include "store/schema.h"
#include "support/archive_fixture.h"
#include "support/queued_press.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QEventLoop>
#include <QPointer>

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <sstream>

namespace tolvek::test {

struct Plan {
    std::deque<Press>
        steps; // each is done when its form waits; the command of the last one is watched
    std::optional<Press> second;
    int moment = 0; // 0: right after the last step; n: at the n-th yield after it
};

class PressedProgram {
public:
    Plan plan;

    // If the program's end interrupts the run, the run ends there.
    std::string run()
    {
        start();
        try {
            wait();
            watched_ = false; // the end of the program is its own command
            left_ = stateOfWindow();
            form_->window()->close();
            rethrowKept();
        } catch (const ProgramEnd&) {
            if (left_.empty()) left_ = "ended";
        }
        finish();
        return left_ + "\n" + stateOnDisk() + "\n" + log_.str();
    }
    // The number of yields of the last step.
    int yields() const { return yields_; }
    void log(const std::string& line) { log_ << line << '\n'; }
    frmTolvek& form() { return *form_; }

private:
    void start()
    {
        form_ = std::make_unique<frmTolvekEvents>();
        form_->Show();
        form_->Timer1->setEnabled(false); // its yields would depend on the clock
        hooks::setYield([this] { atYield(); });
    }
    void wait()
    {
        QEventLoop loop;
        loop_ = &loop;
        const WaitScope scope([&loop] { loop.exit(); });
        const auto watch =
            QObject::connect(QAbstractEventDispatcher::instance(),
                             &QAbstractEventDispatcher::aboutToBlock, [this] { look(); });
        loop.exec();
        QObject::disconnect(watch);
        rethrowKept();
    }
    // The program waits for its user. Queued input is handled first.
    void look()
    {
        QAbstractEventDispatcher::instance()->wakeUp();
        if (settling_-- > 0) return;
        settling_ = kTurnsOfAStep;
        const QWidget* const top = QApplication::activeModalWidget();
        const std::string name = top ? top->objectName().toStdString() : "frmTolvek";
        if (!plan.steps.empty() && plan.steps.front().form == name)
            step();
        else if (top)
            answer(name);
        else
            loop_->exit();
    }
    void step()
    {
        const Press next = plan.steps.front();
        plan.steps.pop_front();
        EXPECT_TRUE(queued::press(next)) << next.control;
        watched_ = plan.steps.empty();
        ofDialog_ = next.form != "frmTolvek";
        if (watched_ && plan.moment == 0) pressSecond();
    }
    void answer(const std::string& form)
    {
        static const std::map<std::string, const char*> buttons = {
            {"frmMailReadOpt", "cmbMail_Ok"}, {"frmFilter", "comOk"},
            {"frmFilterDspChenge", "cmdOK"},  {"frmFriend", "cmdOK"},
            {"frmOption", "cmbOK"},           {"frmDir_Sel", "cmbOK"},
            {"frmBackUpFile", "cmdOK"},       {"frmAbout", "cmdOK"}};
        const auto found = buttons.find(form);
        const bool tired = ++answers_[form] > kPatience;
        if (ofDialog_)
            watched_ = false; // the command of a control has ended and left its dialog open
        if (form == "frmBackUpFile") queued::press({form, "lstBackUpFile"});
        if (found == buttons.end() || tired)
            queued::press({form, kCloseBox});
        else
            queued::press({form, found->second});
        if (tired) log("stays open: " + form);
    }
    void atYield()
    {
        if (!watched_) return;
        ++yields_;
        expectNothingCanBegin();
        if (yields_ == plan.moment) pressSecond();
    }
    // Not even a harmless command: with a key held down, one would begin inside
    // the other for as long as the stack lasts.
    void expectNothingCanBegin() const
    {
        if (InputHold::isHeld() || QApplication::activeModalWidget()) return;
        EXPECT_FALSE(form_->comMailRead->Enabled()) << "at yield " << yields_;
    }
    void pressSecond()
    {
        if (plan.second) queued::press(*plan.second);
    }
    void finish()
    {
        hooks::setYield({});
        EXPECT_FALSE(InputHold::isHeld());
        gUnloading = -1; // a window still open closes without the exit's steps
        form_->Unload();
        form_.reset();
        gUnloading = 0;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    static std::string stateOfWidget(QWidget& widget)
    {
        std::string state = widget.objectName().toStdString();
        if (!widget.isEnabled()) state += " off";
        if (const auto* list = qobject_cast<ListBox*>(&widget)) {
            for (int i = 0; i < list->ListCount(); ++i)
                state += " [" + toUtf8(list->List(i)) + "]";
            state += " at " + std::to_string(list->ListIndex());
        }
        if (const auto* label = qobject_cast<Label*>(&widget))
            state += " '" + toUtf8(label->Caption()) + "'";
        return state;
    }
    std::string stateOfWindow()
    {
        std::ostringstream state;
        for (int i = 0; i < Forms::Count(); ++i)
            state << "form " << toUtf8(Forms::item(i).Name()) << '\n';
        for (QWidget* widget : form_->client().findChildren<QWidget*>())
            if (dynamic_cast<Control*>(widget)) state << stateOfWidget(*widget) << '\n';
        for (const MenuEntry* entry : form_->window()->findChildren<MenuEntry*>())
            if (!entry->Enabled()) state << toUtf8(entry->Name()) << " off\n";
        state << toUtf8(form_->Caption()) << '\n' << toUtf8(form_->txtMail->Text()) << '\n';
        if (const QWidget* const focused = form_->window()->focusWidget())
            state << "focus " << focused->objectName().toStdString() << '\n';
        for (int i = 0; i < gFilterRuleCnt; ++i)
            state << gFilterRule[i].No << toUtf8(gFilterRule[i].Header) << ' ';
        state << int(gNonCopyRuleCnt) << int(gBackUpDisp) << int(gBusyFlag) << int(gDisplayType)
              << int(gEditCancel) << int(gFriendSort) << '\n';
        return state.str();
    }
    static void writeTable(std::ostream& state, const Statement& all, std::size_t fields)
    {
        state << toUtf8(all.text()) << '\n';
        Database opened = DBEngine::OpenDatabase(gDbPath);
        for (Recordset row = opened.OpenRecordset(all); !row.Eof(); row.MoveNext()) {
            for (int i = 0; i < static_cast<int>(fields); ++i)
                state << toUtf8(row.field(i).text()) << '|';
            state << '\n';
        }
        opened.Close();
    }
    static void writeTables(std::ostream& state)
    {
        writeTable(state, Statement{u"SELECT * FROM tblTolvek"}, tblTolvekSpec().fields.size());
        writeTable(state, Statement{u"SELECT * FROM tblSearch_Addresses"}, 1);
        writeTable(state, Statement{u"SELECT * FROM tblSearch_Name"}, 1);
        writeTable(state, Statement{u"SELECT * FROM tblFriend"}, tblFriendSpec().fields.size());
        writeTable(state, Statement{u"SELECT * FROM tblFilter"}, tblFilterSpec().fields.size());
        writeTable(state, Statement{u"SELECT * FROM tblFilterData"},
                   tblFilterDataSpec().fields.size());
    }
    static std::string stateOnDisk()
    {
        std::ostringstream state;
        std::vector<std::string> names = fileNames(nativePath(appPath()));
        std::sort(names.begin(), names.end());
        for (const std::string& name : names)
            state << name << '\n';
        writeTables(state);
        state << readBytes(nativePath(gIniPath));
        return state.str();
    }

    static constexpr int kTurnsOfAStep = 3;
    static constexpr int kPatience = 5;

    std::unique_ptr<frmTolvekEvents> form_;
    QEventLoop* loop_ = nullptr;
    int settling_ = kTurnsOfAStep;
    bool watched_ = false; // the command of the last step is running
    bool ofDialog_ = false;
    int yields_ = 0;
    std::map<std::string, int> answers_;
    std::string left_;
    std::ostringstream log_;
};

}
