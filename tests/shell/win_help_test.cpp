#include "shell/test_hooks.h"
#include "shell/win_help.h"

#include "platform/runtime/paths.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

namespace tolvek::test {
namespace {

class WinHelpTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        hooks::setHelpViewer([this](const Text& path) {
            shown.push_back(path);
            return viewerWorks;
        });
    }
    void TearDown() override { hooks::setHelpViewer({}); }

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

TEST_F(WinHelpTest, AFileThatNothingCanShowIsTold)
{
    writeBytes(folder / "Tolvek.hlp", "help");
    viewerWorks = false;
    boxes.expect(u"ヘルプファイルを開けませんでした。\r\n" + file);
    EXPECT_EQ(help(), 0);
}

}
}
