// The settings and the main window itself.
#include "app/settings.h"
#include "platform/forms/screen.h"
#include "platform/runtime/paths.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"
#include "window/frm_tolvek.h"
#include "window/settings_window.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class SettingsWindowTest : public ::testing::Test {
protected:
    void SetUp() override { gIniPath = joinPath(pathText(folder.path()), u"TOLVEK.ini"); }

    TempFolder folder;
    MsgBoxScript boxes;
};

TEST_F(SettingsWindowTest, WithoutAFileTheWindowIsCentredByItsDesignedSize)
{
    frmTolvek form;
    iniRead(form);
    EXPECT_EQ(form.Width(), 11745);
    EXPECT_EQ(form.Height(), 7404);
    EXPECT_NEAR(form.Left(), (Screen::Width() - 11745) / 2, 1);
    EXPECT_NEAR(form.Top(), (Screen::Height() - 7404) / 2, 1);
}

TEST_F(SettingsWindowTest, WhatIsWrittenIsReadAgain)
{
    frmTolvek form;
    iniRead(form);
    form.setLeft(300);
    form.setTop(-150);
    form.setWidth(12345);
    form.setHeight(7405);
    iniWrite(form);
    frmTolvek next;
    iniRead(next);
    EXPECT_EQ(next.Left(), 300);
    EXPECT_EQ(next.Top(), -150);
    EXPECT_EQ(next.Width(), 12345);
    EXPECT_EQ(next.Height(), 7405);
}

}
}
