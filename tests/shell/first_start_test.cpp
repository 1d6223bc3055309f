// A user's first start: the message, the settings, and the first window.
#include "events_window.h"
#include "platform/forms/text_box.h"
#include "platform/runtime/test_hooks.h"

namespace tolvek::test {
namespace {

constexpr TextView kFirstStart = u"あなたのＰＣの環境を設定してください。";

void leave(QWidget& settings)
{
    press(settings, "cmbCancel");
}

class FirstStartTest : public EventsWindow {};

TEST_F(FirstStartTest, WithoutAnAddressTheSettingsAreAskedForBeforeTheNavigatorIsFilled)
{
    store(mail(u"hanako@example.jp", u"taro@example.jp"));
    execute(Statement{u"INSERT INTO tblSearch_Addresses ( tblSearch_Addr_Data ) "
                      u"VALUES( 'hanako@example.jp' )"});
    givenSettings("[PostPet Mail Option]\r\nMy Mail Addr=\x81\x40 \r\n");
    boxes.expectAndLook(kFirstStart, MsgAnswer::Ok, [&] {
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
        EXPECT_FALSE(form.Visible());
    });
    const ModalScript settings("frmOption", [&](QWidget& shown) {
        EXPECT_EQ(form.lstNameOrAddr->ListCount(), 0);
        leave(shown);
    });
    form.Show();
    EXPECT_EQ(form.lstNameOrAddr->ListCount(), 1);
}

// An unusable style fails each time the font is applied, in both its flags.
TEST_F(FirstStartTest, TheFontIsAppliedTwice)
{
    std::vector<Text> titles;
    hooks::setMsgBox([&](const MsgBoxRequest& box) {
        titles.push_back(box.title);
        return MsgAnswer::Ok;
    });
    givenSettings("[Mail Font]\r\nMail Text Font Style=\r\n");
    const ModalScript settings("frmOption", leave);
    form.Show();
    const Text failed = u"エラーメッセージ (Form_Initialize)";
    EXPECT_EQ(titles, (std::vector<Text>{u"Tolvek", failed, failed, failed, failed}));
}

TEST_F(FirstStartTest, WhatIsSetThereCountsFromTheStartOn)
{
    std::filesystem::create_directories(file("PostPet") / nativePath(u"受信フォルダ"));
    givenSettings("");
    boxes.expect(kFirstStart);
    const ModalScript settings("frmOption", [&](QWidget& shown) {
        controlOf<TextBox>(shown, "txtDisp_PetDir").setText(pathText(file("PostPet")));
        controlOf<TextBox>(shown, "txtMy_Address").setText(u"jiro@example.jp");
        controlOf<TextBox>(shown, "txtMy_Handle").setText(u"次郎");
        controlOf<TextBox>(shown, "txtPetName").setText(u"モモ");
        press(shown, "cmbOK");
    });
    form.Show();
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(gPostPetDir, pathText(file("PostPet")));
    EXPECT_EQ(gMyMailAddr, u"jiro@example.jp");
    EXPECT_EQ(gMyMailHandle, u"次郎");
    EXPECT_EQ(gMyPetName, u"モモ");
}

TEST_F(FirstStartTest, AKnownUserIsntAskedAgain)
{
    form.Show();
    EXPECT_TRUE(boxes.shown().empty());
}

}
}
