#include "platform/runtime/msg_box.h"
#include "platform/forms/events.h"
#include "platform/forms/in_front.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/screen.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

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
        makeRoomForTitle();
        comeToFront(*this);
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
    // A report's title names the routine that failed. Window managers set titles in
    // larger and bolder faces, between an icon and buttons, and cut what has no room.
    void makeRoomForTitle()
    {
        constexpr int kBesideTitle = 120; // pixels
        QFont usual = font();
        usual.setBold(true);
        usual.setPixelSize(QFontInfo(usual).pixelSize() * 4 / 3);
        const int wide = QFontMetrics(usual).horizontalAdvance(windowTitle()) + kBesideTitle;
        const int room = std::min(wide, Screen::available(*this).width() * 9 / 10);
        auto* grid = qobject_cast<QGridLayout*>(layout());
        grid->addItem(new QSpacerItem(room, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }

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
