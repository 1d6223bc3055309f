// Converts the program's texts to Qt's and back, unit by unit.
#pragma once
#include "platform/runtime/text.h"

#include <QString>

namespace tolvek {

inline QString toQt(TextView text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()),
                   static_cast<qsizetype>(text.size()));
}

inline Text fromQt(const QString& text)
{
    return {reinterpret_cast<const char16_t*>(text.constData()),
            static_cast<std::size_t>(text.size())};
}

// The text as it is painted: CR LF, LF CR, CR and LF are one break each, and each
// break is replaced by `mark`.
QString paintedText(TextView text, QChar mark = u'\n');

// For a tool tip, where the toolkit would interpret a text that looks like markup.
QString tipText(const QString& plain);

}
