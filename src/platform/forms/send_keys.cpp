#include "platform/forms/send_keys.h"

#include "platform/forms/events.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/screen.h"
#include "platform/forms/test_hooks.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/key_notation.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/desktop.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMimeData>
#include <QThread>

#include <memory>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace tolvek {

namespace {

constexpr int kNoSuchWindow = 5;
// Milliseconds: clipboard watchers are notified of the new contents and ask for its
// formats.
constexpr int kNoticePause = 20;
constexpr int kPastePause = 30; // after the text has been fetched; measured
constexpr int kFetchPatience = 2000;

std::int32_t activated = 0; // the process that receives SendKeys
hooks::KeySender senderOfTests;

// The toolkit serves clipboard requests while it processes events.
void serve()
{
    const InputHold hold;
    DoEventsNow();
}

template <class Condition> bool serveUntil(int patience, Condition condition)
{
    QElapsedTimer waited;
    for (waited.start(); !condition(); QThread::msleep(1)) {
        if (waited.hasExpired(patience)) return false;
        serve();
    }
    return true;
}

void serveFor(int milliseconds)
{
    serveUntil(milliseconds, [] { return false; });
}

// A text that records when it has been fetched.
class PastedText : public QMimeData {
public:
    PastedText(const QString& text, std::shared_ptr<bool> fetched) : fetched_(std::move(fetched))
    {
        setText(text);
    }

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override
    {
        *fetched_ = true;
        return QMimeData::retrieveData(format, type);
    }

private:
    std::shared_ptr<bool> fetched_;
};

std::unique_ptr<QMimeData> copyOf(const QMimeData* contents)
{
    if (!contents || contents->formats().isEmpty()) return nullptr;
    // A full copy, because the contents are gone once ours replace them.
    auto copy = std::make_unique<QMimeData>();
    for (const QString& format : contents->formats())
        copy->setData(format, contents->data(format));
    if (contents->hasImage()) copy->setImageData(contents->imageData());
    return copy;
}

// Puts a text on the clipboard for one paste and restores the previous contents
// afterwards.
class ClipboardLoan {
public:
    explicit ClipboardLoan(const QString& text)
        : clipboard_(QGuiApplication::clipboard()), before_(copyOf(clipboard_->mimeData()))
    {
        clipboard_->setMimeData(new PastedText(text, fetched_)); // the clipboard takes ownership
    }
    ~ClipboardLoan()
    {
        // somebody else has changed the clipboard meanwhile
        if (!clipboard_->ownsClipboard()) return;
        if (before_)
            clipboard_->setMimeData(before_.release());
        else
            clipboard_->clear();
    }
    ClipboardLoan(const ClipboardLoan&) = delete;
    ClipboardLoan& operator=(const ClipboardLoan&) = delete;

    void expectFetch()
    {
        if (!serveUntil(kFetchPatience, [this] { return *fetched_; }))
            throw RuntimeError(kNoSuchWindow);
    }

private:
    QClipboard* clipboard_;
    std::shared_ptr<bool> fetched_ = std::make_shared<bool>(false);
    std::unique_ptr<QMimeData> before_;
};

void paste(const QString& text)
{
    ClipboardLoan loan(text);
    serveFor(kNoticePause);
    playKeys(activated, keyEvents(u"^v"), serve);
    loan.expectFetch();
    serveFor(kPastePause);
}

bool isPlainCharacter(const KeyEvent& event)
{
    return event.action == KeyAction::Stroke && event.key == Key::Character;
}

// Consecutive keys of one kind: text without any modifier held, or other keys.
struct Run {
    bool isText = false;
    std::vector<KeyEvent> events;
};

std::vector<Run> runsOf(TextView notation)
{
    std::vector<Run> runs;
    int held = 0;
    for (KeyEvent event : keyEvents(notation)) {
        if (event.action == KeyAction::Press) ++held;
        if (event.action == KeyAction::Release) --held;
        // A TAB moves to the next field, so it is sent as a key and never pasted.
        if (event.character == U'\t') event = {KeyAction::Stroke, Key::Tab};
        const bool isText = held == 0 && isPlainCharacter(event);
        if (runs.empty() || runs.back().isText != isText) runs.push_back({isText, {}});
        runs.back().events.push_back(event);
    }
    return runs;
}

QString textOf(const Run& run)
{
    QString text;
    for (const KeyEvent& event : run.events)
        text += QString::fromUcs4(&event.character, 1);
    return text;
}

// A keyboard layout may lack characters, even in ASCII; the paste key handles them
// all.
void play(const Run& run)
{
    try {
        playKeys(activated, run.events, serve);
    } catch (const std::invalid_argument&) {
        // playKeys throws before the first key, so nothing of the text has been
        // typed yet.
        if (!run.isText) throw;
        paste(textOf(run));
    }
}

template <class Work> void orError5(Work work)
{
    try {
        work();
    } catch (const std::system_error&) {
        throw RuntimeError(kNoSuchWindow);
    } catch (const std::invalid_argument&) {
        throw RuntimeError(kNoSuchWindow);
    }
    rethrowKept();
}

}

void AppActivate(std::int32_t processId)
{
    if (senderOfTests.AppActivate) return senderOfTests.AppActivate(processId);
    // A failed activation must not leave the previous target.
    activated = 0;
    orError5([&] {
        serve(); // takes a box that has just closed off the screen first
        activateProcess(processId, serve);
        activated = processId;
    });
}

void SendKeys(TextView keys)
{
    if (senderOfTests.SendKeys) return senderOfTests.SendKeys(keys);
    orError5([&] {
        for (const Run& run : runsOf(keys))
            play(run);
    });
}

void Clipboard::Clear()
{
    QGuiApplication::clipboard()->clear();
}

void Clipboard::SetText(TextView text)
{
    QGuiApplication::clipboard()->setText(toQt(text));
}

Text Clipboard::GetText()
{
    return fromQt(QGuiApplication::clipboard()->text());
}

void hooks::setKeySender(KeySender sender)
{
    senderOfTests = std::move(sender);
}

}
