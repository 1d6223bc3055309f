#include "platform/forms/screen.h"
#include "platform/forms/test_hooks.h"
#include "platform/forms/twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace tolvek {

namespace {

std::function<QRect()> areaOfTests;

}

float Screen::Width()
{
    return twips(QGuiApplication::primaryScreen()->geometry().width());
}

float Screen::Height()
{
    return twips(QGuiApplication::primaryScreen()->geometry().height());
}

QRect Screen::available(const QWidget& window)
{
    return areaOfTests ? areaOfTests() : window.screen()->availableGeometry();
}

void hooks::setAvailableScreen(std::function<QRect()> area)
{
    areaOfTests = std::move(area);
}

}
