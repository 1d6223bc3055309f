#include "platform/runtime/msg_box.h"
#include "platform/forms/events.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/screen.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

namespace tolvek {

namespace {

class MessageBox : public QMessageBox {
public:
    explicit MessageBox(const MsgBoxRequest& request)
        : QMessageBox(QApplication::activeWindow()), buttons_(request.buttons)
    {
        setObjectName(QStringLiteral("MsgBox"));
        setWindowTitle(toQt(request.title));
        // Otherwise a text that looks like markup would be interpreted.
        setTextFormat(Qt::PlainText);
        setText(paintedText(request.text));
        if (request.icon == MsgIcon::Critical) setIcon(QMessageBox::Critical);
        addButtons(request.defaultAnswer);
    }

    MsgAnswer answer() const
    {
        const bool agreed = clickedButton() == agree_;
        switch (buttons_) {
        case MsgButtons::YesNo:
            return agreed ? MsgAnswer::Yes : MsgAnswer::No;
        case MsgButtons::OkCancel:
            return agreed ? MsgAnswer::Ok : MsgAnswer::Cancel;
        default:
            return MsgAnswer::Ok;
        }
    }

protected:
    // Escape must not answer a question; the close box still means No.
    void keyPressEvent(QKeyEvent* event) override
    {
        if (buttons_ == MsgButtons::YesNo && event->key() == Qt::Key_Escape)
            event->accept();
        else
            QMessageBox::keyPressEvent(event);
    }

private:
    void addButtons(MsgAnswer defaultAnswer)
    {
        const bool yesNo = buttons_ == MsgButtons::YesNo;
        agree_ = yesNo ? addButton(QStringLiteral("はい"), QMessageBox::YesRole)
                       : addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        if (buttons_ == MsgButtons::Ok) return;
        QPushButton* refuse =
            yesNo ? addButton(QStringLiteral("いいえ"), QMessageBox::NoRole)
                  : addButton(QStringLiteral("キャンセル"), QMessageBox::RejectRole);
        // Also the answer of the close box.
        setEscapeButton(refuse);
        setDefaultButton(yesNo && defaultAnswer == MsgAnswer::No ? refuse : agree_);
    }

    MsgButtons buttons_;
    QPushButton* agree_ = nullptr;
};

MsgAnswer showBox(const MsgBoxRequest& request)
{
    MessageBox box(request);
    // An event that throws closes the box; the exception is then rethrown here and
    // no answer is returned.
    const WaitScope wait([&box] { box.done(0); });
    box.exec();
    rethrowKept();
    return box.answer();
}

}

void showBoxesOnTheScreen()
{
    setMsgBoxScreen(showBox);
}

}
