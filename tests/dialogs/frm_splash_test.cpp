#include "app/settings.h"
#include "dialogs/frm_splash.h"
#include "platform/forms/screen.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/files.h"
#include "platform/system/process.h"
#include "platform/system/test_hooks.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <QApplication>
#include <QTest>

#include <system_error>

namespace tolvek::test {
namespace {

class FrmSplashTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setAppPath(pathText(folder.path()));
        gIniPath.clear();
    }
    void TearDown() override
    {
        splash.Unload();
        hooks::setWindowsFolder({});
        hooks::setFileProbe({});
    }

    TempFolder folder;
    MsgBoxScript boxes;
    frmSplash splash;
};

TEST_F(FrmSplashTest, ShowsTheTitleAndTheVersion)
{
    splash.Show();
    EXPECT_EQ(splash.lblProductName->Caption(), u"Tolvek");
    EXPECT_EQ(splash.lblVersion->Caption(), u"Version 3.3.1");
    EXPECT_EQ(splash.lblPlatform->Caption(), u"Windows 95以上");
    EXPECT_EQ(splash.lblWait->Caption(), u"しばらく御待ち下さい");
    EXPECT_EQ(splash.lblWarning->Caption(), u"");
    EXPECT_FALSE(splash.lblCopyright1->Caption().empty());
    EXPECT_FALSE(splash.lblCopyright2->Caption().empty());
}

TEST_F(FrmSplashTest, ItsLoadFindsTheSettingsFile)
{
    splash.Load();
    EXPECT_EQ(gIniPath, joinPath(appPath(), u"TOLVEK.ini"));
}

TEST_F(FrmSplashTest, ItsLoadBringsAnOldSettingsFileBesideTheProgram)
{
    const TempFolder windows;
    hooks::setWindowsFolder(windows.path());
    writeBytes(windows / "TOLVEK.ini", "[Mail Font]\r\n");
    splash.Load();
    EXPECT_EQ(readBytes(folder / "TOLVEK.ini"), "[Mail Font]\r\n");
    EXPECT_FALSE(fileExists(windows / "TOLVEK.ini"));
}

TEST_F(FrmSplashTest, AFailureOfTheLoadIsToldAndTheLoadGoesOn)
{
    const TempFolder windows;
    hooks::setWindowsFolder(windows.path());
    writeBytes(windows / "TOLVEK.ini", "[Mail Font]\r\n");
    hooks::setFileProbe([](FileOperation operation, const std::filesystem::path&) {
        if (operation == FileOperation::Remove)
            throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    splash.Load();
    EXPECT_EQ(titles, std::vector<Text>{u"エラーメッセージ (Form_Load)"});
    EXPECT_EQ(splash.lblVersion->Caption(), u"Version 3.3.1");
    EXPECT_EQ(gIniPath, joinPath(appPath(), u"TOLVEK.ini"));
}

TEST_F(FrmSplashTest, TheWaitLabelBlinksBetweenBlackAndBlue)
{
    constexpr Colour blue = 0xFF0000;
    splash.Show();
    EXPECT_EQ(splash.Timer1->Interval(), 500);
    for (const Colour expected : {0, blue, 0, blue}) {
        emit splash.Timer1->Tick();
        EXPECT_EQ(splash.lblWait->ForeColor(), expected);
    }
    EXPECT_EQ(splash.lblWait->palette().color(QPalette::WindowText), QColor(Qt::blue));
}

TEST_F(FrmSplashTest, EachLoadStartsTheBlinkingAnew)
{
    splash.Show();
    emit splash.Timer1->Tick();
    splash.Unload();
    splash.Show();
    emit splash.Timer1->Tick();
    EXPECT_EQ(splash.lblWait->ForeColor(), 0);
}

TEST_F(FrmSplashTest, ItTicksByItselfWhileEventsAreProcessed)
{
    splash.Show();
    splash.lblWait->setForeColor(kWindowText);
    EXPECT_TRUE(QTest::qWaitFor([&] { return splash.lblWait->ForeColor() == 0; }, 60000));
}

TEST_F(FrmSplashTest, StandsInTheMiddleNotOnTopAndCantBeClosed)
{
    splash.Show();
    EXPECT_NEAR(splash.Left(), (Screen::Width() - splash.Width()) / 2, 1);
    EXPECT_NEAR(splash.Top(), (Screen::Height() - splash.Height()) / 2, 1);
    EXPECT_FALSE(splash.window()->windowFlags() & Qt::WindowStaysOnTopHint);
    splash.window()->close();
    QTest::keyClick(splash.window(), Qt::Key_Escape);
    QTest::keyClick(splash.window(), Qt::Key_F4, Qt::AltModifier);
    EXPECT_TRUE(splash.Visible());
    splash.Unload();
    EXPECT_FALSE(splash.Visible());
}

TEST_F(FrmSplashTest, ItsTextsFit)
{
    splash.Show();
    for (Label* label : splash.window()->findChildren<Label*>()) {
        EXPECT_GE(label->width(), label->sizeHint().width()) << toUtf8(label->Name());
        EXPECT_GE(label->height(), label->sizeHint().height()) << toUtf8(label->Name());
        EXPECT_TRUE(splash.fraMainFrame->rect().contains(label->geometry()));
    }
}

}
}
