#include "dialogs/frm_about.h"

#include "app/settings.h"
#include "dialogs/sys_info.h"
#include "platform/forms/events.h"

namespace tolvek {

namespace {

// The comment in the program's version record.
constexpr TextView kComments = u"Tolvek　は　ＰｏｓｔＰｅｔ "
                               u"2001のメールをＤＢにＳａｖｅする為のプログラムです。";

// All in twips. The rule consists of two lines, a light one a pixel below a dark one,
// so that it looks engraved.
constexpr float kLightRule = 1572;
constexpr float kDarkRule = 1560;
constexpr Colour kRuleColours[] = {0xFFFFFF, 0x808080};
constexpr float kFormWidth = 6480;
constexpr float kMargin = 240;
constexpr float kInner = kFormWidth - 2 * kMargin;
constexpr float kBelowRule = 1770;
constexpr float kButtonWidth = 1815;
constexpr float kButtonHeight = 390;
constexpr float kButtonStep = kButtonHeight + 90;
constexpr float kFormHeight = kBelowRule + kButtonStep + kButtonHeight + kMargin;
constexpr float kButtonLeft = kFormWidth - kMargin - kButtonWidth;

}

frmAbout::frmAbout() : Form(u"frmAbout", BorderStyle::FixedDialog)
{
    setCaption(u"ﾊﾞｰｼﾞｮﾝ情報");
    setWidth(kFormWidth + kFrameTwipsWide);
    setHeight(kFormHeight + kFrameTwipsHigh);
}

void frmAbout::buildControls()
{
    buildLabels();
    buildButtons();
    for (int i = 0; i < Line1.size(); ++i) {
        Line1[i] = new Line(*this, u"Line1(" + decimal(i) + u")");
        Line1[i]->setForeColor(kRuleColours[i]);
    }
}

void frmAbout::buildLabels()
{
    lblVersion = new Label(*this, u"lblVersion");
    lblVersion->Move(kMargin, kMargin, kInner, 270);
    lblVersion->setFontOf(kDefaultFontName, 12, true);
    lblDescription = new Label(*this, u"lblDescription");
    lblDescription->Move(kMargin, 630, kInner, 870);
    lblDescription->setWordWrap(true);
    lblDisclaimer = new Label(*this, u"lblDisclaimer");
    lblDisclaimer->Move(kMargin, kBelowRule, kButtonLeft - 2 * kMargin,
                        kButtonStep + kButtonHeight);
    lblDisclaimer->setWordWrap(true);
}

void frmAbout::buildButtons()
{
    cmdOK = new CommandButton(*this, u"cmdOK", u"OK");
    cmdOK->Move(kButtonLeft, kBelowRule, kButtonWidth, kButtonHeight);
    cmdOK->setTabIndex(0);
    cmdSysInfo = new CommandButton(*this, u"cmdSysInfo", u"ｼｽﾃﾑ情報(&S)...");
    cmdSysInfo->Move(kButtonLeft, kBelowRule + kButtonStep, kButtonWidth, kButtonHeight);
    cmdSysInfo->setTabIndex(1);
    setDefaultButton(cmdOK);
    setCancelButton(cmdOK);
    onEvent(cmdOK, &CommandButton::Click, [this] { Unload(); });
    onEvent(cmdSysInfo, &CommandButton::Click, [] { StartSysInfo(); });
}

void frmAbout::layRules()
{
    Line1[0]->setPoints(0, kLightRule, kFormWidth, kLightRule);
    Line1[1]->setPoints(0, kDarkRule, kFormWidth, kDarkRule);
}

void frmAbout::Form_Load()
{
    CentreOnScreen();
    layRules();
    lblVersion->setCaption(u"Version " + versionText());
    lblDescription->setCaption(u"ｱﾌﾟﾘｹｰｼｮﾝの説明\r\n\r\n   " + Text(kComments));
    // Kept: a placeholder that was never filled in.
    lblDisclaimer->setCaption(u"警告: ...");
}

}
