// A stand-in for PostPet, as far as a reply needs it: a main screen, menus by Alt+F and
// Alt+E, and a new-mail screen with address, subject and text. Built as PostPet20.exe.
//
// At each change, what arrived is written to the record beside the program
// (PostPet20.exe.record, JSON): the process, the number of mails begun, address,
// subject and text of the last one, the order in which they came, the clipboard at the
// time of the paste, and what was typed into other screens.
//
// PostPet20.exe.ini beside it configures its behaviour:
//   start_delay   milliseconds until its window appears
//   screen        page (of the main window) or window (of its own)
//   screen_delay  milliseconds until the new-mail screen is ready
//   dialog        1: another screen is open over the main one
//   gone          1: it ends as soon as the address has been filled in
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace {

class Record {
public:
    Record()
    {
        values_[QStringLiteral("pid")] = static_cast<double>(QCoreApplication::applicationPid());
    }
    void beginMail()
    {
        set("mails", values_[QStringLiteral("mails")].toInt() + 1);
        order_ = {};
    }
    void arrived(const char* field, const QString& text)
    {
        if (!text.isEmpty() && !order_.contains(QJsonValue(QLatin1String(field))))
            order_.append(QLatin1String(field));
        values_[QStringLiteral("order")] = order_;
        set(field, text);
    }
    void set(const char* field, const QJsonValue& value)
    {
        values_[QLatin1String(field)] = value;
        // Complete at any moment, but without waiting for the disk: keys arrive fast.
        const std::string record =
            QCoreApplication::applicationFilePath().toStdString() + ".record";
        std::ofstream(record + ".new", std::ios::binary)
            << QJsonDocument(values_).toJson().toStdString();
        std::filesystem::rename(record + ".new", record);
    }

private:
    QJsonObject values_;
    QJsonArray order_;
};

// Two tabs lead from the subject to the text; the attachments are in between.
class MailScreen : public QWidget {
public:
    explicit MailScreen(Record& record) : record_(record)
    {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(new QLabel(QStringLiteral("To")));
        rows->addWidget(&address_);
        rows->addWidget(new QLabel(QStringLiteral("Subject")));
        rows->addWidget(&subject_);
        rows->addWidget(&enclosure_);
        rows->addWidget(&text_);
        enclosure_.setText(QStringLiteral("treasure..."));
        text_.setTabChangesFocus(true);
        connect(&address_, &QLineEdit::textChanged, this,
                [this](const QString& text) { record_.arrived("address", text); });
        connect(&subject_, &QLineEdit::textChanged, this,
                [this](const QString& text) { record_.arrived("subject", text); });
        connect(&text_, &QPlainTextEdit::textChanged, this,
                [this] { record_.arrived("text", text_.toPlainText()); });
        connect(&address_, &QLineEdit::editingFinished, this, [this] { filled(); });
    }
    void begin()
    {
        for (QLineEdit* field : {&address_, &subject_})
            field->clear();
        text_.clear();
        record_.beginMail();
        address_.setFocus();
    }
    void paste()
    {
        record_.set("pasted", QGuiApplication::clipboard()->text());
        QWidget* const target = window()->focusWidget();
        if (target == &text_) text_.paste();
        if (auto* field = qobject_cast<QLineEdit*>(target)) field->paste();
    }
    std::function<void()> addressFilled;

private:
    void filled()
    {
        if (addressFilled && !address_.text().isEmpty()) addressFilled();
    }

    Record& record_;
    QLineEdit address_, subject_;
    QPushButton enclosure_;
    QPlainTextEdit text_;
};

class StandIn : public QMainWindow {
public:
    StandIn()
        : settings_(QCoreApplication::applicationFilePath() + QStringLiteral(".ini"),
                    QSettings::IniFormat)
    {
        setWindowTitle(QStringLiteral("stand-in"));
        resize(480, 360);
        addMenus(*this);
        auto* screens = new QStackedWidget(this);
        room_ = new QLineEdit;
        screens->addWidget(room_);
        connect(room_, &QLineEdit::textChanged, this,
                [this](const QString& text) { record_.set("room", text); });
        mail_ = new MailScreen(record_);
        if (inWindow()) {
            mailWindow_.setWindowTitle(QStringLiteral("new mail"));
            mailWindow_.setCentralWidget(mail_);
            addMenus(mailWindow_);
            room_->installEventFilter(this);
        } else {
            screens->addWidget(mail_);
        }
        setCentralWidget(screens);
        if (settings_.value(QStringLiteral("gone")).toBool())
            mail_->addressFilled = [] { std::_Exit(0); };
    }
    int delay(const char* name) const { return settings_.value(QLatin1String(name), 0).toInt(); }
    void start()
    {
        show();
        record_.set("shown", true);
        if (settings_.value(QStringLiteral("dialog")).toBool()) openDialog();
    }

protected:
    // The user can act only from now on.
    void changeEvent(QEvent* event) override
    {
        QMainWindow::changeEvent(event);
        if (event->type() == QEvent::ActivationChange && isActiveWindow())
            record_.set("ready", true);
    }

    // Here the window system activates a new window some time after it was shown. On the
    // classic platform the keys that were typed meanwhile go to the new window.
    bool eventFilter(QObject* target, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || !mailWindow_.isVisible())
            return QMainWindow::eventFilter(target, event);
        return QCoreApplication::sendEvent(mailWindow_.focusWidget(), event);
    }

private:
    bool inWindow() const
    {
        return settings_.value(QStringLiteral("screen")).toString() == QLatin1String("window");
    }
    void addMenus(QMainWindow& window)
    {
        QMenu* const file = window.menuBar()->addMenu(QStringLiteral("ファイル(&F)"));
        file->addAction(QStringLiteral("新しいメール(&N)"), this, [this] {
            QTimer::singleShot(delay("screen_delay"), this, [this] { openMail(); });
        });
        file->addAction(QStringLiteral("終了(&X)"), qApp, &QCoreApplication::quit);
        QMenu* const edit = window.menuBar()->addMenu(QStringLiteral("編集(&E)"));
        edit->addAction(QStringLiteral("貼り付け(&J)"), this, [this] { mail_->paste(); });
    }
    void openMail()
    {
        if (inWindow()) {
            mailWindow_.resize(480, 360);
            mailWindow_.show();
            mailWindow_.activateWindow();
        } else {
            static_cast<QStackedWidget*>(centralWidget())->setCurrentWidget(mail_);
        }
        mail_->begin();
    }
    void openDialog()
    {
        auto* dialog = new QDialog(this);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setWindowTitle(QStringLiteral("another screen"));
        auto* rows = new QVBoxLayout(dialog);
        auto* field = new QLineEdit;
        rows->addWidget(field);
        connect(field, &QLineEdit::textChanged, this,
                [this](const QString& text) { record_.set("dialog", text); });
        dialog->open();
        QTimer::singleShot(0, this, [this] { record_.set("ready", true); });
    }

    QSettings settings_;
    Record record_;
    QLineEdit* room_ = nullptr; // receives what is typed into the main screen
    MailScreen* mail_ = nullptr;
    QMainWindow mailWindow_;
};

}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    StandIn window;
    QTimer::singleShot(window.delay("start_delay"), &window, [&] { window.start(); });
    QApplication::setQuitOnLastWindowClosed(false);
    return QApplication::exec();
}
