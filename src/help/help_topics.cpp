#include "help/help_topics.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr HelpTopic kTopics[] = {
    {QLatin1StringView("FontDialog"), QLatin1StringView("settings.html#font")},
    {QLatin1StringView("InputBox"), QLatin1StringView("friends.html#add")},
    {QLatin1StringView("MsgBox"), QLatin1StringView("messages.html")},
    {QLatin1StringView("frmAbout"), QLatin1StringView("what-is.html#version")},
    {QLatin1StringView("frmBackUpFile"), QLatin1StringView("backup.html#view")},
    {QLatin1StringView("frmDir_Sel"), QLatin1StringView("settings.html#folder")},
    {QLatin1StringView("frmFilter"), QLatin1StringView("filters.html")},
    {QLatin1StringView("frmFilterDspChenge"), QLatin1StringView("filters.html#order")},
    {QLatin1StringView("frmFriend"), QLatin1StringView("friends.html")},
    {QLatin1StringView("frmHelp"), QLatin1StringView("help.html")},
    {QLatin1StringView("frmMailReadOpt"), QLatin1StringView("read.html#boxes")},
    {QLatin1StringView("frmOption"), QLatin1StringView("settings.html")},
};

}

std::span<const HelpTopic> helpTopics()
{
    return kTopics;
}

QString helpPageOf(const QString& window)
{
    const auto found = std::ranges::find(kTopics, window, &HelpTopic::window);
    return found == std::end(kTopics) ? QString() : QString(found->page);
}

}
