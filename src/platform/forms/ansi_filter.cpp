#include "platform/forms/ansi_filter.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/codepage932.h"

#include <QLineEdit>

namespace tolvek {

QString onlyAnsi(const QString& text)
{
    if (fitsAnsi(fromQt(text))) return text;
    QString kept;
    for (const QChar unit : text)
        if (fitsAnsi(TextView(reinterpret_cast<const char16_t*>(&unit), 1))) kept += unit;
    return kept;
}

void holdToAnsi(QLineEdit& edit)
{
    QObject::connect(&edit, &QLineEdit::textEdited, &edit, [&edit](const QString& typed) {
        const QString kept = onlyAnsi(typed);
        if (kept == typed) return;
        const auto caret = onlyAnsi(typed.left(edit.cursorPosition())).size();
        edit.setText(kept);
        edit.setCursorPosition(static_cast<int>(caret));
    });
}

}
