#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"

#include <QFontDatabase>
#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace tolvek {

namespace {

struct ProgramFont {
    TextView name;
    bool fixedPitch;
    std::array<const char*, 3> families; // in order of preference
    QFont::StyleHint hint;
};

// The IPA faces have the same widths as the originals. The last family of each line
// at least keeps the pitch if no Japanese face is installed.
constexpr std::array<ProgramFont, 4> kProgramFonts{{
    {u"ＭＳ ゴシック", true, {"MS Gothic", "IPAGothic", "Noto Sans Mono CJK JP"}, QFont::Monospace},
    {u"ＭＳ 明朝", true, {"MS Mincho", "IPAMincho", "Noto Sans Mono CJK JP"}, QFont::Monospace},
    {u"ＭＳ Ｐゴシック", false, {"MS PGothic", "IPAPGothic", "Noto Sans CJK JP"}, QFont::SansSerif},
    {u"ＭＳ Ｐ明朝", false, {"MS PMincho", "IPAPMincho", "Noto Serif CJK JP"}, QFont::Serif},
}};

const ProgramFont* programFont(TextView name)
{
    for (const ProgramFont& font : kProgramFonts)
        if (font.name == name) return &font;
    return nullptr;
}

QString firstInstalled(const ProgramFont& font)
{
    QString own = toQt(font.name);
    if (QFontDatabase::hasFamily(own)) return own;
    for (const char* family : font.families)
        if (QFontDatabase::hasFamily(QString::fromLatin1(family)))
            return QString::fromLatin1(family);
    return own;
}

// The nearest even number of device pixels; of two equally near ones the smaller,
// so that a text that fitted before still fits.
int evenDevicePixels(double size)
{
    const double ratio = qGuiApp->devicePixelRatio();
    // With an even ratio every size is an even number of device pixels.
    if (std::fmod(ratio, 2.0) == 0.0) return static_cast<int>(std::lround(size));
    const double device = 2 * std::ceil(size * ratio / 2 - 0.5);
    return static_cast<int>(std::lround(device / ratio));
}

}

std::vector<TextView> programFontNames()
{
    std::vector<TextView> names;
    for (const ProgramFont& font : kProgramFonts)
        names.push_back(font.name);
    return names;
}

bool isFixedPitchName(TextView name)
{
    const ProgramFont* font = programFont(name);
    return font && font->fixedPitch;
}

QString installedFamily(TextView name)
{
    const ProgramFont* font = programFont(name);
    return font ? firstInstalled(*font) : toQt(name);
}

QFont platformFont(const FontChoice& choice)
{
    QFont font(installedFamily(choice.name));
    // A point is 1/72 inch; sizes are meant for 96 dpi.
    const double size = choice.size * 96.0 / 72.0;
    const int rounded = isFixedPitchName(choice.name) ? evenDevicePixels(size)
                                                      : static_cast<int>(std::lround(size));
    font.setPixelSize(std::max(rounded, 1));
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    // Makes Qt choose a similar face if no family of the line is installed.
    if (const ProgramFont* known = programFont(choice.name))
        font.setStyleHint(known->hint, QFont::PreferOutline);
    return font;
}

QFont narrowedTo(int room, const QFont& font, const QString& text)
{
    constexpr int kNarrowest = 70;
    const int wide = QFontMetrics(font).horizontalAdvance(text);
    if (room <= 0 || wide <= room) return font;
    QFont narrow = font;
    narrow.setStretch(std::max(kNarrowest, 100 * room / wide));
    return narrow;
}

}
