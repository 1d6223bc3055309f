#include "shell/win_help.h"

#include "help/frm_help.h"
#include "help/help_pack.h"
#include "platform/runtime/paths.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

namespace tolvek::test {
namespace {

class WinHelpTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        setHelpViewer([this](const HelpRequest& request) {
            shown.push_back(request.file);
            return viewerWorks;
        });
    }
    void TearDown() override { setHelpViewer({}); }

    std::int32_t help() { return WinHelpA(nullptr, file, HELP_INDEX, 0); }

    TempFolder folder;
    MsgBoxScript boxes;
    Text file = joinPath(pathText(folder.path()), u"Tolvek.hlp");
    std::vector<Text> shown;
    bool viewerWorks = true;
};

TEST_F(WinHelpTest, TheHelpFileIsHandedToTheViewer)
{
    writeBytes(folder / "Tolvek.hlp", "help");
    EXPECT_NE(help(), 0);
    EXPECT_EQ(shown, std::vector<Text>{file});
}

TEST_F(WinHelpTest, AMissingHelpFileIsToldAndNothingIsOpened)
{
    boxes.expect(u"ヘルプファイルがありません。\r\n" + file, MsgAnswer::Ok, u"Tolvek");
    EXPECT_EQ(help(), 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(WinHelpTest, WithoutAViewerNoHelpIsShown)
{
    setHelpViewer({});
    writeBytes(folder / "Tolvek.hlp", "help");
    boxes.expect(u"ヘルプファイルを開けませんでした。\r\n" + file);
    EXPECT_EQ(help(), 0);
}

TEST_F(WinHelpTest, TheHelpWindowShowsTheContentsOfAHelpFileAlone)
{
    frmHelp window;
    setHelpViewer(viewerIn(window));
    writeBytes(folder / "Tolvek.hlp", "help");
    boxes.expect(u"ヘルプファイルを開けませんでした。\r\n" + file);
    EXPECT_EQ(help(), 0);
    EXPECT_FALSE(window.Loaded());
    writeBytes(folder / "Tolvek.hlp",
               packedHelp({{"index.html", "<title>目次</title>"}}).toStdString());
    EXPECT_NE(help(), 0);
    EXPECT_TRUE(window.Visible());
    window.Unload();
}

TEST_F(WinHelpTest, AFileThatNothingCanShowIsTold)
{
    writeBytes(folder / "Tolvek.hlp", "help");
    viewerWorks = false;
    boxes.expect(u"ヘルプファイルを開けませんでした。\r\n" + file);
    EXPECT_EQ(help(), 0);
}

}
}
