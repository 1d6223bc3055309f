#include "platform/forms/screen.h"
#include "platform/forms/twips.h"

#include <QGuiApplication>
#include <QScreen>

namespace tolvek::Screen {

float Width()
{
    return twips(QGuiApplication::primaryScreen()->geometry().width());
}

float Height()
{
    return twips(QGuiApplication::primaryScreen()->geometry().height());
}

}
