#include "platform/forms/msg_box.h"
#include "platform/forms/events.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/wait_scope.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

namespace tolvek {

namespace {

MsgBoxHandler msgBoxHandler;
std::function<void()> beforeWaitHook;

class MessageBox : public QMessageBox {
public:
    explicit MessageBox(const MsgBoxRequest& request)
        : QMessageBox(QApplication::activeWindow()), yesNo_(request.buttons == MsgButtons::YesNo)
    {
        setObjectName(QStringLiteral("MsgBox"));
        setWindowTitle(toQt(request.title));
        setTextFormat(Qt::PlainText);
        setText(paintedText(request.text));
        if (request.icon == MsgIcon::Critical) setIcon(QMessageBox::Critical);
        if (yesNo_)
            addYesNo(request.defaultAnswer);
        else
            addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    }

    MsgAnswer answer() const
    {
        if (!yesNo_) return MsgAnswer::Ok;
        return clickedButton() == yes_ ? MsgAnswer::Yes : MsgAnswer::No;
    }

protected:
    // Escape must not answer a question; the close box still says No.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (yesNo_ && event->key() == Qt::Key_Escape)
            event->accept();
        else
            QMessageBox::keyPressEvent(event);
    }

private:
    void addYesNo(MsgAnswer defaultAnswer)
    {
        yes_ = addButton(QStringLiteral("はい"), QMessageBox::YesRole);
        QPushButton* no = addButton(QStringLiteral("いいえ"), QMessageBox::NoRole);
        setEscapeButton(no);
        setDefaultButton(defaultAnswer == MsgAnswer::No ? no : yes_);
    }

    bool yesNo_;
    QPushButton* yes_ = nullptr;
};

MsgAnswer showBox(const MsgBoxRequest& request)
{
    MessageBox box(request);
    const WaitScope wait([&box] { box.done(0); });
    box.exec();
    rethrowKept();
    return box.answer();
}

}

void setMsgBoxHandler(MsgBoxHandler handler)
{
    msgBoxHandler = std::move(handler);
}

void setBeforeWait(std::function<void()> hook)
{
    beforeWaitHook = std::move(hook);
}

void beforeWait()
{
    if (beforeWaitHook) beforeWaitHook();
}

MsgAnswer MsgBox(TextView text, MsgButtons buttons, TextView title, MsgIcon icon,
                 MsgAnswer defaultAnswer)
{
    beforeWait();
    const MsgBoxRequest request{Text(text), buttons, Text(title), icon, defaultAnswer};
    return msgBoxHandler ? msgBoxHandler(request) : showBox(request);
}

}
