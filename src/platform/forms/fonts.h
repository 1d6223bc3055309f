// Fonts by the names in the program's settings.
//
// ＭＳ ゴシック, ＭＳ 明朝 and their proportional variants are used if installed; otherwise a
// substitute is used. The requested name is kept by whoever stores it; nothing here
// writes a name back. A fixed-pitch name gets a fixed-pitch face at an even number
// of device pixels, because only then is a full-width character exactly twice as
// wide as a half-width one.
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

// The names that are always available, with a substitute if necessary.
std::vector<TextView> programFontNames();

QFont platformFont(const FontChoice& choice);

// The installed family used for a name; the name itself if it isn't one of the
// program's own.
QString installedFamily(TextView name);
// The font narrowed as far as needed for the text to fit in `room` pixels, but not
// below 70 per cent of its width, where it becomes unreadable.
QFont narrowedTo(int room, const QFont& font, const QString& text);
bool isFixedPitchName(TextView name);

}
