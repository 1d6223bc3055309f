// F1 in every window, and what the help shows then.
#include "every_form.h"
#include "help/frm_help.h"
#include "help/help_browser.h"
#include "help/help_topics.h"
#include "platform/forms/font_dialog.h"
#include "platform/forms/input_box.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/test_hooks.h"
#include "shell/win_help.h"
#include "window/status.h"

#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

namespace tolvek::test {
namespace {

class HelpKeyTest : public EveryForm {
protected:
    void SetUp() override
    {
        EveryForm::SetUp();
        writeBytes(file("Tolvek.hlp"), "help");
        setHelpViewer([this](const HelpRequest& request) {
            asked.push_back(request);
            return true;
        });
    }
    void TearDown() override
    {
        setHelpViewer({});
        EveryForm::TearDown();
    }

    static void pressHelp(QWidget& window)
    {
        QWidget* const focused = window.focusWidget();
        QTest::keyClick(focused ? focused : &window, Qt::Key_F1);
    }
    // Presses the key in the next modal window, then closes that.
    static void pressHelpInBox()
    {
        QTimer::singleShot(0, [] {
            QWidget* const box = QApplication::activeModalWidget();
            if (!box) return pressHelpInBox();
            pressHelp(*box);
            box->close();
        });
    }

    HelpKey key{*QCoreApplication::instance()};
    std::vector<HelpRequest> asked;
};

TEST_F(HelpKeyTest, OpensThePageOfEachForm)
{
    atEveryForm([this](Form& shown) {
        asked.clear();
        pressHelp(*shown.window());
        const QString page = helpPageOf(toQt(shown.Name()));
        const bool hasHelp = shown.Name() != u"frmSplash";
        ASSERT_EQ(asked.size(), hasHelp ? 1u : 0u);
        if (!hasHelp) return;
        EXPECT_EQ(asked[0].address.toStdString(), page.toStdString());
        // The main window's key is its menu command's: the contents.
        EXPECT_EQ(page.isEmpty(), shown.Name() == u"frmTolvek");
    });
}

TEST_F(HelpKeyTest, InAMessageBoxGivesItsTextToo)
{
    hooks::setMsgBox({}); // on the screen
    pressHelpInBox();
    MsgBox(u"最低１ヶ所には、チェックを付けて下さい。");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].address, "messages.html");
    EXPECT_EQ(asked[0].message, u"最低１ヶ所には、チェックを付けて下さい。");
}

TEST_F(HelpKeyTest, WorksInTheInputBox)
{
    pressHelpInBox();
    InputBox(u"名前", u"題");
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].address, "friends.html#add");
}

TEST_F(HelpKeyTest, IsDeadInTheMainWindowWhileTheHelpMenuIsOff)
{
    form.Show();
    dspEnable(form, false, 0);
    pressHelp(*form.window());
    EXPECT_TRUE(asked.empty());
}

TEST_F(HelpKeyTest, AMissingHelpFileIsReportedInADialogToo)
{
    std::filesystem::remove(file("Tolvek.hlp"));
    boxes.expect(u"ヘルプファイルがありません。\r\n" + joinPath(appPath(), u"Tolvek.hlp"));
    frmOption dialog;
    dialog.Show();
    pressHelp(*dialog.window());
    dialog.Unload();
}

// The window itself: it opens beside a dialog that waits, and takes input there.
TEST_F(HelpKeyTest, TheHelpIsUsableWhileADialogWaits)
{
    frmHelp help;
    setHelpViewer(viewerIn(help));
    std::filesystem::copy_file(TOLVEK_HELP_FILE, file("Tolvek.hlp"),
                               std::filesystem::copy_options::overwrite_existing);
    ModalScript dialog("frmOption", [&](QWidget& shown) {
        pressHelp(shown);
        EXPECT_TRUE(help.Visible());
        if (help.Visible()) {
            EXPECT_EQ(help.page->source().path(), "/settings.html");
            // By the window system, which keeps presses from a window below a dialog.
            QTest::mouseClick(help.window()->windowHandle(), Qt::LeftButton, {},
                              help.home->mapTo(help.window(), help.home->rect().center()));
            EXPECT_EQ(help.page->source().path(), "/index.html");
        }
        press(shown, "cmbCancel");
    });
    frmOption().ShowModal();
    EXPECT_TRUE(help.Visible()); // it stays after the dialog
    help.Unload();
}

}
}
