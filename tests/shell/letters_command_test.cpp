// Ctrl+F in the main window: the program that finds letters, where it lies beside this one.
#include "shell/letters_command.h"

#include "events_window.h"
#include "platform/forms/input_hold.h"
#include "platform/system/child_program.h"
#include "store/search_tables.h"
#include "window/status.h"

#include <QTest>

namespace tolvek::test {
namespace {

struct Started {
    Text program, person;
    bool operator==(const Started&) const = default;
};

class LettersCommandTest : public EventsWindow {
protected:
    void SetUp() override
    {
        EventsWindow::SetUp();
        setLettersStarter([this](const Text& program, const Text& person) {
            if (failing) throw RuntimeError(75);
            started.push_back({program, person});
        });
        store(mail(u"hanako@example.jp", u"taro@example.jp"));
        edSearch_Addr();
        edSearch_Name();
    }
    void TearDown() override
    {
        setLettersStarter({});
        EventsWindow::TearDown();
    }

    void givenTheProgram() const { writeBytes(file(programFileName("TolvekLetters")), "program"); }
    Text program() const { return joinPath(appPath(), fromUtf8(programFileName("TolvekLetters"))); }
    void show()
    {
        form.Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form.window(), 60000));
    }
    void press() { QTest::keyClick(form.window(), Qt::Key_F, Qt::ControlModifier); }

    std::vector<Started> started;
    bool failing = false;
};

TEST_F(LettersCommandTest, CtrlFStartsTheProgramBesideThisOne)
{
    givenTheProgram();
    show();
    press();
    EXPECT_EQ(started, (std::vector<Started>{{program(), u""}}));
}

TEST_F(LettersCommandTest, TheSelectedAddressGoesWithIt)
{
    givenTheProgram();
    show();
    form.lstNameOrAddr->setListIndex(0);
    press();
    EXPECT_EQ(started, (std::vector<Started>{{program(), u"hanako@example.jp"}}));
}

TEST_F(LettersCommandTest, TheSelectedNameGoesWithIt)
{
    givenTheProgram();
    gDisplayType = 1;
    writeBytes(file("TOLVEK.ini"), "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n"
                                   "[Tolvek Environment]\r\nDisplay Type=1\r\n");
    show();
    gDisplayType = 1;
    form.lstNameOrAddr->Clear();
    form.lstNameOrAddr->AddItem(u"花子");
    form.lstNameOrAddr->AddItem(u"設定無し");
    form.lstNameOrAddr->setListIndex(0);
    press();
    form.lstNameOrAddr->setListIndex(1);
    press();
    EXPECT_EQ(started, (std::vector<Started>{{program(), u"花子"}, {program(), u""}}));
}

TEST_F(LettersCommandTest, ADateIsNoCorrespondent)
{
    givenTheProgram();
    show();
    gDisplayType = 2;
    form.lstNameOrAddr->Clear();
    form.lstNameOrAddr->AddItem(u"2000/02/15");
    form.lstNameOrAddr->setListIndex(0);
    press();
    EXPECT_EQ(started, (std::vector<Started>{{program(), u""}}));
}

TEST_F(LettersCommandTest, WithoutTheProgramTheKeyDoesNothing)
{
    show();
    press();
    EXPECT_TRUE(started.empty());
}

TEST_F(LettersCommandTest, WhileTheCommandsAreOffTheKeyIsDead)
{
    givenTheProgram();
    show();
    dspEnable(form, false, 0);
    press();
    EXPECT_TRUE(started.empty());
    dspEnable(form, true, 0);
    press();
    EXPECT_EQ(started.size(), 1u);
}

TEST_F(LettersCommandTest, DuringAHoldTheKeyWaits)
{
    givenTheProgram();
    show();
    {
        const InputHold hold;
        press();
        EXPECT_TRUE(started.empty());
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(started.size(), 1u);
}

TEST_F(LettersCommandTest, AProgramThatCantBeStartedIsReported)
{
    givenTheProgram();
    failing = true;
    show();
    boxes.expect(u"エラー番号： 75\r（" + errorText(75) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (findLetters)");
    press();
}

}
}
