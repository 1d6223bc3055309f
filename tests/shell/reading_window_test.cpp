// The main window while a large mail box is read: it is painted, its clock advances and
// its status text blinks, all during the one command.
#include "platform/forms/events.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/test_hooks.h"
#include "shell/frm_tolvek_events.h"
#include "support/archive_fixture.h"
#include "support/modal_script.h"
#include "support/painted.h"

#include <QApplication>
#include <QTest>

#include <cstdio>
#include <fstream>
#include <map>
#include <set>

namespace tolvek::test {
namespace {

constexpr int kMails = 500;
constexpr int kTickEvery = 5; // milliseconds: many ticks, however fast the read is
constexpr int kNever = 0;
constexpr Colour kRed = 0xFF;

int seconds = 0;
Timer* ticking = nullptr; // the window's

// Each reading of the clock is a second later. A tick reads it first, and until mails
// are read again it is the last tick.
DateTime oneSecondLater()
{
    ticking->setInterval(kNever);
    ++seconds;
    return {2001, 2, 3, seconds / 3600 % 24, seconds / 60 % 60, seconds % 60};
}

// Counts the paint events while a command runs.
class PaintCounter : public QObject {
public:
    PaintCounter() { qApp->installEventFilter(this); }
    int of(const QWidget* widget) { return paints_[widget]; }

protected:
    bool eventFilter(QObject* target, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && gBusyFlag == -1) ++paints_[target];
        return false;
    }

private:
    std::map<const QObject*, int> paints_;
};

// The timer ticks every few milliseconds while mails are read, but never inside a tick:
// on a busy machine the painting in a tick takes longer than the interval, and nested
// ticks would neither be in order nor end.
class ReadingWindowTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        writeBytes(file("TOLVEK.ini"),
                   "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n[Mail Options]"
                   "\r\nReciev Mail Read Option=1,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\r\n");
        converterLibrary().Tolvek_Edit = [this](const Text&, const Text&, const Text&, Int16& count,
                                                Int16& status) {
            writeManyMails();
            count = kMails;
            status = 0;
        };
        converterLibrary().Mail_StrChange = [change = converterLibrary().Mail_StrChange](
                                                const Text& text, Text& result, Int16& length) {
            if (ticking->Interval() == kNever) ticking->setInterval(kTickEvery);
            change(text, result, length);
        };
        form.Show();
        ticking = form.Timer1;
        hooks::setClock(oneSecondLater);
        ticking->setInterval(kTickEvery);
    }
    void TearDown() override
    {
        hooks::setClock({});
        gUnloading = -1; // the window closes without the exit's steps
        form.Unload();
        gUnloading = 0;
        ArchiveFixture::TearDown();
    }

    void writeManyMails() const
    {
        std::ofstream tmp(file("Tolvek.Tmp"), std::ios::binary);
        tmp << "\"<Start>\"\r\n";
        for (int i = 0; i < kMails; ++i) {
            char clock[16];
            std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", i / 3600, i / 60 % 60, i % 60);
            tmp << "From:<hanako@example.jp>\r\nTo:<taro@example.jp>\r\nSubject:mail " << i
                << "\r\nDate:Tue, 15 Feb 2000 " << clock << " +0900\r\nMail:\r\ntext\r\n<End>\r\n";
        }
    }
    // Records what the window shows at each tick of a running command.
    void watch()
    {
        onEvent(form.Timer1, &Timer::Tick, [this] {
            if (gBusyFlag != -1) return;
            ++ticks;
            times.insert(form.lblDate->Caption());
            colours.insert(form.txtMail->ForeColor());
            texts.insert(form.txtMail->Text());
            form.client().update(); // as if another window had covered it
        });
    }
    void read()
    {
        const ModalScript dialog("frmMailReadOpt",
                                 [](QWidget& shown) { press(shown, "cmbMail_Ok"); });
        form.comMailRead->click();
        rethrowKept();
    }
    void expectLivelyWindow(PaintCounter& painted)
    {
        EXPECT_GE(ticks, 5);
        EXPECT_GE(painted.of(&form.client()), 5);
        EXPECT_GE(painted.of(form.txtMail->viewport()), 5);
        EXPECT_GE(painted.of(form.lblDate), 5);
        EXPECT_GE(times.size(), 5u);
        EXPECT_EQ(colours, (std::set<Colour>{kWindowText, kRed}));
    }

    int ticks = 0;
    std::set<Text> times, texts;
    std::set<Colour> colours;
    frmTolvekEvents form;
};

TEST_F(ReadingWindowTest, TheWindowIsPaintedTheClockGoesOnAndTheStatusTextBlinks)
{
    PaintCounter painted;
    watch();
    read();
    expectLivelyWindow(painted);
    EXPECT_EQ(rows(u"tblTolvek"), kMails);
    EXPECT_GE(texts.size(), 3u) << "the text has the count of mails";
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.txtMail->ForeColor(), kWindowText);
}

// A queued click may be delivered by the yield of the timer's own tick.
TEST_F(ReadingWindowTest, AReadThatBeginsInsideATickIsNoDifferent)
{
    PaintCounter painted;
    bool begun = false;
    const auto beginning = onEvent(form.Timer1, &Timer::Tick, [&] {
        if (!std::exchange(begun, true)) read();
    });
    watch();
    EXPECT_TRUE(QTest::qWaitFor([&] { return begun && gBusyFlag == 0; }, 60000));
    QObject::disconnect(beginning);
    expectLivelyWindow(painted);
}

TEST_F(ReadingWindowTest, TheStatusTextIsReallyPaintedBlackAndRedInTurn)
{
    std::vector<bool> reds;
    onEvent(form.Timer1, &Timer::Tick, [&] {
        if (gBusyFlag != -1 || reds.size() == 4) return;
        const QImage pane = painted(*form.txtMail->viewport());
        reds.push_back(isInkedIn(Qt::red, pane));
        EXPECT_NE(isInkedIn(Qt::black, pane), reds.back()) << reds.size();
    });
    read();
    const bool first = !reds.empty() && reds.front();
    EXPECT_EQ(reds, (std::vector<bool>{first, !first, first, !first}));
}

TEST_F(ReadingWindowTest, CommandsAreOffAtEachTickAndTheMailPaneIsNot)
{
    int seen = 0;
    onEvent(form.Timer1, &Timer::Tick, [&] {
        if (gBusyFlag != -1 || gStatusLines[5].empty()) return;
        ++seen;
        EXPECT_FALSE(form.comMailRead->Enabled());
        EXPECT_FALSE(form.comEnd->Enabled());
        EXPECT_FALSE(form.memFile->Enabled());
        EXPECT_TRUE(form.txtMail->Enabled());
    });
    read();
    EXPECT_GE(seen, 5);
    EXPECT_TRUE(form.comMailRead->Enabled());
}

}
}
