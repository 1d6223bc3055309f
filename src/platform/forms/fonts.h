// Fonts by the names that the program's settings hold.
//
// ＭＳ ゴシック, ＭＳ 明朝 and their proportional sisters are used where they are
// installed; otherwise a stand-in is, and the name that was asked for is kept
// by whoever stores it: nothing here writes a name back. A fixed-pitch name
// gets a fixed-pitch face, at an even number of device pixels, since only there
// is a full-width character exactly twice a half-width one.
#pragma once
#include "platform/runtime/text.h"

#include <QFont>

#include <vector>

namespace tolvek {

inline constexpr TextView kDefaultFontName = u"ＭＳ Ｐゴシック";
inline constexpr float kDefaultFontSize = 9;

struct FontChoice {
    Text name{kDefaultFontName};
    float size = kDefaultFontSize; // points at 96 dpi
    bool bold = false;
    bool italic = false;
};

// The names that are always there, by a stand-in if need be.
std::vector<TextView> programFontNames();

QFont platformFont(const FontChoice& choice);

// The installed family that takes the name's place; the name itself when it is
// none of the program's own.
QString installedFamily(TextView name);
// The font, its face narrowed as far as a text needs to fit `room` pixels; not
// below 70 per cent of its width, where it stops being readable.
QFont narrowedTo(int room, const QFont& font, const QString& text);
bool isFixedPitchName(TextView name);

}
