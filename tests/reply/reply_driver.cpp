// The program with an archive, controlled line by line from the standard input:
// reply_driver FOLDER.
//
//   select N     the first address, and the mail in row N of its list
//   reply        presses comSendMail
//   friend A     opens the friend editor, types the address, presses cmdSndMail,
//                and leaves the editor by Cancel
//   answer B     the caption of the button that answers the boxes from now on
//   refuse W     the key sender refuses a text with that word in it
//   quit         closes the main window
//
// Each is answered "done" when it has finished. Boxes are really shown; each is written
// as "box TEXT", with its line breaks as "|".
#include "app/converter_library.h"
#include "app/program_end.h"
#include "app/test_hooks.h"
#include "dialogs/frm_splash.h"
#include "friend/frm_friend.h"
#include "platform/dao/dao.h"
#include "platform/forms/events.h"
#include "platform/forms/send_keys.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "shell/frm_tolvek_events.h"
#include "shell/tolvek_main.h"
#include "store/archive_tables.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

using namespace tolvek;

void say(const std::string& line)
{
    std::cout << line << std::endl;
}

void useConverterWithoutMail()
{
    ConverterLibrary library;
    library.Tolvek_Edit = [](const Text&, const Text&, const Text&, Int16& count, Int16& status) {
        count = 0;
        status = 1;
    };
    library.TolvekFriend_Edit = [](const Text&, const Text&, Int16& count, Int16&) { count = 0; };
    library.Mail_StrChange = [](const Text& source, Text& result, Int16& length) {
        result = source;
        length = static_cast<int>(source.size());
    };
    hooks::setConverterLibrary(library);
}

// The real sender, except for texts with this word.
Text refusedWord;

void refuse();

// Removes the refusal for its lifetime.
class Really {
public:
    Really() { hooks::setKeySender({}); }
    ~Really() { refuse(); }
    Really(const Really&) = delete;
    Really& operator=(const Really&) = delete;
};

void activateReally(std::int32_t id)
{
    const Really sender;
    AppActivate(id);
}

void sendUnlessRefused(TextView keys)
{
    if (keys.find(refusedWord) != TextView::npos) throw RuntimeError(5);
    const Really sender;
    SendKeys(keys);
}

void refuse()
{
    hooks::setKeySender({activateReally, sendUnlessRefused});
}

class User {
public:
    explicit User(frmTolvek& window) : window_(window), input_(STDIN_FILENO, QSocketNotifier::Read)
    {
        QObject::connect(&input_, &QSocketNotifier::activated, [this] { obey(); });
        QObject::connect(&eyes_, &QTimer::timeout, [this] { look(); });
        eyes_.start(5);
    }

private:
    void obey()
    {
        std::string line;
        if (!std::getline(std::cin, line)) _exit(0); // the test is gone
        const std::size_t blank = line.find(' ');
        const std::string word = line.substr(0, blank);
        act(word, blank == std::string::npos ? std::string() : line.substr(blank + 1));
        say("done");
    }
    void act(const std::string& word, const std::string& rest)
    {
        if (word == "select") select(std::stoi(rest));
        if (word == "reply") window_.comSendMail->click();
        if (word == "friend") mailToFriend(rest);
        if (word == "answer") answer_ = QString::fromStdString(rest);
        if (word == "refuse") refuseTextsWith(rest);
        if (word == "quit") QTimer::singleShot(0, [this] { window_.window()->close(); });
    }
    void select(int row)
    {
        window_.lstNameOrAddr->setListIndex(0);
        window_.lstSubject->setListIndex(row);
    }
    void mailToFriend(const std::string& address)
    {
        friendAddress_ = QString::fromStdString(address);
        window_.memFriend_A->action().trigger();
    }

    static void refuseTextsWith(const std::string& word)
    {
        refusedWord = fromUtf8(word);
        refuse();
    }

    void look()
    {
        QWidget* const modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) return atBox(*box);
        if (!modal || friendAddress_.isEmpty()) return;
        auto* const address = modal->findChild<QLineEdit*>(QStringLiteral("txtAddress"));
        if (!address || !isSeen(*modal)) return;
        address->setText(friendAddress_);
        friendAddress_.clear();
        // Not inside the tick: a timer doesn't tick inside its own tick, and boxes may
        // follow.
        QTimer::singleShot(0, modal, [editor = QPointer<QWidget>(modal)] {
            press(editor, "cmdSndMail");
            press(editor, "cmdCancel");
        });
    }
    // Acts only when the window has come to the front or, without a manager to bring it
    // there, after some time.
    bool isSeen(QWidget& modal)
    {
        if (&modal != looked_) {
            looked_ = &modal;
            since_.start();
        }
        return modal.isActiveWindow() || since_.hasExpired(1000);
    }
    static void press(QWidget* form, const char* name)
    {
        if (!form) return;
        if (auto* button = form->findChild<QAbstractButton*>(QLatin1String(name))) button->click();
    }
    // Only a box that is visible, as for its user.
    void atBox(QMessageBox& box)
    {
        if (!box.isVisible() || &box == answered_ || !isSeen(box)) return;
        answered_ = &box;
        say("box " + box.text().replace(QLatin1Char('\n'), QLatin1Char('|')).toStdString());
        for (QAbstractButton* button : box.buttons())
            if (button->text() == answer_ || box.buttons().size() == 1)
                return QTimer::singleShot(20, button, [button] { button->click(); });
    }

    frmTolvek& window_;
    QSocketNotifier input_;
    QTimer eyes_;
    QPointer<QMessageBox> answered_;
    QPointer<QWidget> looked_;
    QElapsedTimer since_;
    QString answer_ = QStringLiteral("OK");
    QString friendAddress_;
};

}

int main(int argc, char** argv)
{
    if (argc < 2) return 2;
    QApplication application(argc, argv);
    prepareApplication();
    setBeforeWait(DBEngine::Rest);
    registerArchiveTables();
    setEndFunction([] { endProgram(); });
    setAppPath(fromUtf8(argv[1]));
    useConverterWithoutMail();
    frmSplash splash;
    frmTolvekEvents window;
    const User user(window);
    Main(splash, window);
    say("done");
    return runApplication();
}
