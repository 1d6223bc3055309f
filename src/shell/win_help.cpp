#include "shell/win_help.h"

#include "platform/forms/qt_text.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "shell/test_hooks.h"

#include <QDesktopServices>
#include <QUrl>

namespace tolvek {

namespace {

bool showOnDesktop(const Text& file)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(toQt(file)));
}

std::function<bool(const Text&)> viewerInUse = showOnDesktop;

}

void hooks::setHelpViewer(std::function<bool(const Text&)> viewer)
{
    viewerInUse = viewer ? std::move(viewer) : showOnDesktop;
}

// The desktop's viewers know neither commands nor owner windows: the file opens at its
// beginning, which is the index.
std::int32_t WinHelpA(QWidget*, const Text& file, std::uint32_t, std::uintptr_t)
{
    const Path path = existingPath(file);
    if (!fileExists(path)) {
        MsgBox(u"ヘルプファイルがありません。\r\n" + file);
        return 0;
    }
    if (viewerInUse(pathText(path))) return 1;
    MsgBox(u"ヘルプファイルを開けませんでした。\r\n" + file);
    return 0;
}

}
