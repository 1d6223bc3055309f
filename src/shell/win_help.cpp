#include "shell/win_help.h"

#include "help/frm_help.h"
#include "help/help_topics.h"
#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <QKeyEvent>
#include <QMessageBox>

namespace tolvek {

namespace {

std::function<bool(const HelpRequest&)> viewerInUse;

std::int32_t show(const HelpRequest& request)
{
    const Path path = existingPath(request.file);
    if (!fileExists(path)) {
        MsgBox(u"ヘルプファイルがありません。\r\n" + request.file);
        return 0;
    }
    if (viewerInUse && viewerInUse({pathText(path), request.address, request.message})) return 1;
    MsgBox(u"ヘルプファイルを開けませんでした。\r\n" + request.file);
    return 0;
}

bool isHelpKey(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

Text messageIn(const QWidget& window)
{
    const auto* const box = qobject_cast<const QMessageBox*>(&window);
    return box ? fromQt(box->text()) : Text();
}

}

void setHelpViewer(std::function<bool(const HelpRequest&)> viewer)
{
    viewerInUse = std::move(viewer);
}

std::function<bool(const HelpRequest&)> viewerIn(frmHelp& window)
{
    return [&window](const HelpRequest& request) {
        return request.message.empty() ? window.Open(request.file, request.address)
                                       : window.OpenMessage(request.file, request.message);
    };
}

std::int32_t WinHelpA(QWidget*, const Text& file, std::uint32_t, std::uintptr_t)
{
    return show({file, {}, {}});
}

HelpKey::HelpKey(QObject& application)
{
    application.installEventFilter(this);
}

// What is kept back comes again.
bool HelpKey::eventFilter(QObject* target, QEvent* event)
{
    if (!isHelpKey(*event) || !target->isWidgetType() || InputHold::isHeld()) return false;
    const QWidget& window = *static_cast<QWidget*>(target)->window();
    const QString page = helpPageOf(window.objectName());
    if (page.isEmpty()) return false;
    runEvent([&] { show({joinPath(appPath(), u"Tolvek.hlp"), page, messageIn(window)}); });
    return true;
}

}
