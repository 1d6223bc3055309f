// A program to type into: a line for an address, one for a subject, a box for a
// text, and the menus File/New and Edit/Paste. At each change their contents are
// written to a file, one after the other, each followed by "|".
//
//   key_receiver FILE                  a window
//   key_receiver FILE --dialog         with a modal dialog open, which has one line
//   key_receiver FILE --slow           takes half a second for a new mail
//   key_receiver FILE --thief OTHER N  takes the keyboard once OTHER has N bytes
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

namespace {

class Receiver : public QMainWindow {
public:
    explicit Receiver(const QString& file) : file_(file)
    {
        auto* middle = new QWidget;
        auto* column = new QVBoxLayout(middle);
        column->addWidget(address_ = new QLineEdit);
        column->addWidget(subject_ = new QLineEdit);
        column->addWidget(text_ = new QPlainTextEdit);
        setCentralWidget(middle);
        text_->setTabChangesFocus(true);
        for (QLineEdit* line : {address_, subject_})
            connect(line, &QLineEdit::textChanged, this, [this] { write(); });
        connect(text_, &QPlainTextEdit::textChanged, this, [this] { write(); });
        makeMenus();
        write();
    }

    void openDialog()
    {
        auto* dialog = new QDialog(this);
        dialog->setModal(true);
        (new QVBoxLayout(dialog))->addWidget(dialogLine_ = new QLineEdit);
        connect(dialogLine_, &QLineEdit::textChanged, this, [this] { write(); });
        dialog->show();
    }
    void takeKeyboardAfter(const QString& other, qint64 bytes)
    {
        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, this, [this, timer, other, bytes] {
            if (QFileInfo(other).size() < bytes) return;
            timer->stop();
            showNormal();
            activateWindow();
        });
        timer->start(1);
    }
    void beSlow() { slow_ = true; }

private:
    void makeMenus()
    {
        QMenu* fileMenu = menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
        QAction* newMail = fileMenu->addAction(QStringLiteral("新規(&N)"));
        connect(newMail, &QAction::triggered, this, [this] {
            if (slow_) QThread::msleep(500);
            for (QLineEdit* line : {address_, subject_})
                line->clear();
            text_->clear();
            address_->setFocus();
        });
        QMenu* editMenu = menuBar()->addMenu(QStringLiteral("編集(&E)"));
        QAction* paste = editMenu->addAction(QStringLiteral("貼り付け(&J)"));
        connect(paste, &QAction::triggered, text_, &QPlainTextEdit::paste);
    }

    void write()
    {
        QFile out(file_ + QStringLiteral(".new"));
        if (!out.open(QFile::WriteOnly)) qFatal("can't write");
        QString all =
            address_->text() + u'|' + subject_->text() + u'|' + text_->toPlainText() + u'|';
        if (dialogLine_) all += dialogLine_->text() + u'|';
        out.write(all.toUtf8());
        out.close();
        ::rename(qPrintable(out.fileName()), qPrintable(file_));
    }

    QString file_;
    QLineEdit* address_ = nullptr;
    QLineEdit* subject_ = nullptr;
    QLineEdit* dialogLine_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    bool slow_ = false;
};

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    Receiver receiver(words.value(1));
    const QString manner = words.value(2);
    if (manner == QStringLiteral("--slow")) receiver.beSlow();
    if (manner == QStringLiteral("--thief"))
        receiver.takeKeyboardAfter(words.value(3), words.value(4).toLongLong());
    else
        receiver.show();
    if (manner == QStringLiteral("--dialog")) receiver.openDialog();
    return QApplication::exec();
}
