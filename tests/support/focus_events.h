// The focus events that a screen reader is given.
//
// Needs Qt6::GuiPrivate: find_package(Qt6 REQUIRED COMPONENTS Gui), LINKS Qt6::GuiPrivate.
#pragma once
#include "support/heard.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <utility>
#include <vector>

namespace tolvek::test {

// The names of what got the focus, in their order, while the object lives.
class FocusEvents {
public:
    FocusEvents()
    {
        names().clear();
        setActive(true);
        before_ = QAccessible::installUpdateHandler(note);
    }
    ~FocusEvents()
    {
        QAccessible::installUpdateHandler(before_);
        setActive(false);
    }
    FocusEvents(const FocusEvents&) = delete;
    FocusEvents& operator=(const FocusEvents&) = delete;

    std::vector<std::string> taken() { return std::exchange(names(), {}); }

private:
    static void setActive(bool active)
    {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
    }
    static std::vector<std::string>& names()
    {
        static std::vector<std::string> all;
        return all;
    }
    static void note(QAccessibleEvent* event)
    {
        if (event->type() != QAccessible::Focus) return;
        QAccessibleInterface* const item = event->accessibleInterface();
        names().push_back(item ? spokenName(*item) : "nothing");
    }

    QAccessible::UpdateHandler before_;
};

}
