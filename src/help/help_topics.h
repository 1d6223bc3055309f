// Which page of the manual belongs to which window: what F1 opens there.
#pragma once
#include <QLatin1StringView>
#include <QString>

#include <span>

namespace tolvek {

struct HelpTopic {
    QLatin1StringView window; // the form's name
    QLatin1StringView page;
};

std::span<const HelpTopic> helpTopics();
// Empty for a window without a page. The main window is one: its menu has the key.
QString helpPageOf(const QString& window);

}
