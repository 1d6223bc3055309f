#include "dialogs/frm_splash.h"

#include "app/guard.h"
#include "app/settings.h"
#include "app/settings_file.h"
#include "dialogs/pictures.h"
#include "platform/forms/events.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"

namespace tolvek {

namespace {

// Colours are 0xBBGGRR.
constexpr Colour kBlue = 0xFF0000;
constexpr Colour kBlack = 0;
constexpr Colour kPaper = 0xFFFFFF;

// Positions are in twips from the frame's corner.
struct LabelSpec {
    Label* frmSplash::*member;
    TextView name;
    TextView caption; // empty if set during the load
    float left, top, width, height;
    float points;
    bool bold;
    Alignment alignment;
};

constexpr float kFormWidth = 7200;
constexpr float kFormHeight = 4350;
constexpr float kMargin = 120;

const LabelSpec kLabels[] = {
    {&frmSplash::lblProductName, u"lblProductName", u"", 2640, 480, 4080, 810, 30, true,
     Alignment::Left},
    {&frmSplash::lblVersion, u"lblVersion", u"", 2670, 1350, 4050, 300, 12, false, Alignment::Left},
    {&frmSplash::lblPlatform, u"lblPlatform", u"Windows 95以上", 2670, 1695, 4050, 300, 12, false,
     Alignment::Left},
    {&frmSplash::lblWait, u"lblWait", u"しばらく御待ち下さい", 240, 2340, 6480, 360, 15, true,
     Alignment::Centre},
    {&frmSplash::lblWarning, u"lblWarning", u"", 240, 2760, 6480, 570, 9, false, Alignment::Centre},
    {&frmSplash::lblCopyright1, u"lblCopyright1", u"", 240, 3420, 6480, 225, 9, false,
     Alignment::Right},
    {&frmSplash::lblCopyright2, u"lblCopyright2", u"", 240, 3675, 6480, 225, 9, false,
     Alignment::Right},
};

}

frmSplash::frmSplash() : Form(u"frmSplash", BorderStyle::None)
{
    setCaption(kApplicationTitle);
    setBackColor(kPaper);
    setControlBox(false);
    setWidth(kFormWidth);
    setHeight(kFormHeight);
}

void frmSplash::buildControls()
{
    fraMainFrame = new Frame(*this, u"fraMainFrame");
    fraMainFrame->setSpokenName(kApplicationTitle);
    fraMainFrame->setBackColor(kPaper);
    fraMainFrame->Move(kMargin, kMargin, kFormWidth - 2 * kMargin, kFormHeight - 2 * kMargin);
    buildPictures();
    buildLabels();
    Timer1 = new Timer(*this, u"Timer1", 500);
    onEvent(Timer1, &Timer::Tick, [this] { Timer1_Timer(); });
}

void frmSplash::buildPictures()
{
    Image1 = new PictureBox(*fraMainFrame, u"Image1");
    Image1->Move(300, 270, 1950, 1950);
    Image1->setDraw(drawLetter);
    Image1->setSpokenName(u"手紙の絵");
    Image2 = new PictureBox(*fraMainFrame, u"Image2");
    Image2->Move(1770, 1440, 690, 690);
    Image2->setDraw(drawPaw);
    Image2->setSpokenName(u"足あとの絵");
}

void frmSplash::buildLabels()
{
    for (const LabelSpec& spec : kLabels) {
        Label* label = new Label(*fraMainFrame, spec.name, spec.caption);
        label->Move(spec.left, spec.top, spec.width, spec.height);
        label->setFontOf(kDefaultFontName, spec.points, spec.bold);
        label->setTextAlignment(spec.alignment);
        this->*spec.member = label;
    }
}

void frmSplash::Form_Load()
{
    const ResumeNext on{u"Form_Load"};
    on([this] { blinkFlag_ = 0; });
    on([] { findSettingsFile(); });
    on([this] { CentreOnScreen(); });
    on([this] { lblVersion->setCaption(u"Version " + versionText()); });
    on([this] { lblProductName->setCaption(kApplicationTitle); });
    on([this] { lblCopyright1->setCaption(u"Copyright (C)　Tolvek をつくったひとたち"); });
    on([this] { lblCopyright2->setCaption(u"たいせつなメールを、いつまでも。"); });
    on([] { DoEvents(); });
}

void frmSplash::Timer1_Timer()
{
    lblWait->setForeColor(blinkFlag_ != 0 ? kBlue : kBlack);
    blinkFlag_ = blinkFlag_ != 0 ? 0 : -1;
}

}
