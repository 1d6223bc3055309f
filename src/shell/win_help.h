// The help: the window that shows the help file, by command and by F1.
//
// The menu's command opens the contents. F1 in a dialog or a message box opens the page
// about it; in the main window the key is the menu command's, and as dead as that.
#pragma once
#include "platform/runtime/text.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

class QWidget;

namespace tolvek {

class frmHelp;

inline constexpr std::uint32_t HELP_INDEX = 3;

struct HelpRequest {
    Text file;
    QString address; // a page; empty for the contents
    Text message;    // the text of the message box that it is about
};

// Non-zero when the help was shown. If the file is missing or can't be shown, a box
// says so.
std::int32_t WinHelpA(QWidget* window, const Text& file, std::uint32_t command,
                      std::uintptr_t data);

// What shows the help; it returns false when it couldn't. Without one, no help can be
// shown.
void setHelpViewer(std::function<bool(const HelpRequest&)> viewer);
std::function<bool(const HelpRequest&)> viewerIn(frmHelp& window);

// While it exists, F1 in a window that has a page in the help opens it there.
class HelpKey : public QObject {
public:
    explicit HelpKey(QObject& application);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;
};

}
