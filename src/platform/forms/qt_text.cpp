#include "platform/forms/qt_text.h"

#include <QTextDocument>

namespace tolvek {

namespace {

bool isBreak(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

}

QString paintedText(TextView text, QChar mark)
{
    QString painted;
    painted.reserve(static_cast<qsizetype>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isBreak(text[i])) {
            painted += QChar(text[i]);
            continue;
        }
        painted += mark;
        // CR LF and LF CR are one break; two equal units are two.
        if (i + 1 < text.size() && isBreak(text[i + 1]) && text[i + 1] != text[i]) ++i;
    }
    return painted;
}

QString tipText(const QString& plain)
{
    return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

}
