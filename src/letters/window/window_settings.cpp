#include "letters/window/window_settings.h"

#include <QSettings>
#include <QStandardPaths>

#include <algorithm>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

WindowSettings readWindowSettings(const QString& file)
{
    const QSettings stored(file, QSettings::IniFormat);
    WindowSettings settings;
    settings.geometry = stored.value(u"geometry"_s).toByteArray();
    settings.panes = stored.value(u"panes"_s).toByteArray();
    settings.columns = stored.value(u"columns"_s).toByteArray();
    settings.textPoints =
        std::clamp(stored.value(u"textPoints"_s, settings.textPoints).toInt(), 6, 48);
    settings.scheme = static_cast<Scheme>(std::clamp(stored.value(u"scheme"_s, 0).toInt(), 0, 2));
    return settings;
}

void writeWindowSettings(const QString& file, const WindowSettings& settings)
{
    QSettings stored(file, QSettings::IniFormat);
    stored.setValue(u"geometry"_s, settings.geometry);
    stored.setValue(u"panes"_s, settings.panes);
    stored.setValue(u"columns"_s, settings.columns);
    stored.setValue(u"textPoints"_s, settings.textPoints);
    stored.setValue(u"scheme"_s, static_cast<int>(settings.scheme));
}

QString windowSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           u"/Tolvek/TolvekLetters.ini"_s;
}

}
