#include "platform/forms/appearance.h"

#include "platform/forms/fonts.h"

#include <QApplication>
#include <QToolTip>
#include <QTranslator>

// The registration is explicit: a static build drops a resource that nothing names.
// The macro works only outside of all namespaces.
static void registerToolkitWords()
{
    Q_INIT_RESOURCE(toolkit_words);
}

namespace tolvek {

namespace {

struct Tint {
    QPalette::ColorRole role;
    QRgb normal, disabled;
};

constexpr QRgb kFace = 0xFFF0F0F0;
constexpr QRgb kWhite = 0xFFFFFFFF;
constexpr QRgb kBlack = 0xFF000000;
constexpr QRgb kGreyText = 0xFF585858; // thin strokes are painted in lighter shades of it
constexpr QRgb kChosen = 0xFF2060A8;
constexpr QRgb kGreyChosen = 0xFF808080;

constexpr Tint kTints[] = {
    {QPalette::Window, kFace, kFace},
    {QPalette::WindowText, kBlack, kGreyText},
    {QPalette::Base, kWhite, kFace},
    {QPalette::AlternateBase, 0xFFF7F7F7, kFace},
    {QPalette::Text, kBlack, kGreyText},
    {QPalette::PlaceholderText, kGreyText, kGreyText},
    {QPalette::Button, kFace, kFace},
    {QPalette::ButtonText, kBlack, kGreyText},
    {QPalette::BrightText, kWhite, kWhite},
    {QPalette::Light, kWhite, kWhite},
    {QPalette::Midlight, 0xFFE0E0E0, 0xFFE0E0E0},
    {QPalette::Mid, 0xFFB8B8B8, 0xFFB8B8B8},
    {QPalette::Dark, 0xFF9F9F9F, 0xFFBEBEBE},
    {QPalette::Shadow, 0xFF767676, 0xFFB1B1B1},
    {QPalette::Highlight, kChosen, kGreyChosen},
    {QPalette::HighlightedText, kWhite, kWhite},
    {QPalette::Link, 0xFF0000C0, kGreyText},
    {QPalette::LinkVisited, 0xFF600080, kGreyText},
    {QPalette::NoRole, kBlack, kGreyText},
    {QPalette::ToolTipBase, 0xFFFFFFE1, 0xFFFFFFE1},
    {QPalette::ToolTipText, kBlack, kBlack},
};
static_assert(std::size(kTints) == QPalette::NColorRoles);

QPalette builtPalette()
{
    QPalette palette;
    for (const Tint& tint : kTints) {
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, tint.role, QColor(tint.normal));
        palette.setColor(QPalette::Disabled, tint.role, QColor(tint.disabled));
    }
    return palette;
}

// The program is Japanese on every desktop, so the words don't depend on its language.
void speakJapanese()
{
    registerToolkitWords();
    auto* words = new QTranslator(qApp);
    if (words->load(QStringLiteral(":/toolkit_words/qtbase_ja.qm")))
        QApplication::installTranslator(words);
}

}

const QPalette& lightPalette()
{
    static const QPalette palette = builtPalette();
    return palette;
}

void setAppearance()
{
    // Other styles take colours from the desktop's theme past the palette.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(lightPalette());
    QToolTip::setPalette(lightPalette());
    QApplication::setFont(platformFont({})); // for menus, boxes and tool tips
    speakJapanese();
}

}
