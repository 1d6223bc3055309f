// What the window remembers: sizes, text size, colour scheme. In the user's own settings
// folder, never beside the archive, which may be on a read-only medium.
#pragma once
#include <QByteArray>
#include <QString>

namespace tolvek {

enum class Scheme { System, Light, Dark };

struct WindowSettings {
    QByteArray geometry, panes, columns;
    int textPoints = 11;
    Scheme scheme = Scheme::System;
};

WindowSettings readWindowSettings(const QString& file);
void writeWindowSettings(const QString& file, const WindowSettings& settings);
QString windowSettingsFile(); // the user's

}
