#include "platform/system/desktop.h"

#include "platform/system/linux/x11_keyboard.h"
#include "platform/system/linux/x11_windows.h"
#include "platform/system/process.h"

#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <optional>
#include <system_error>

namespace tolvek {

namespace {

constexpr std::chrono::milliseconds kPatience{2000};
// For the first window of a program, counted from its start.
constexpr std::chrono::milliseconds kStartPatience{6000};
constexpr long kAsPager = 2; // source indication 2: a pager, acting for the user
// Milliseconds, measured: a menu that is opening loses a letter that arrives
// earlier.
constexpr int kMenuPause = 60;
constexpr int kKeyPause = 10;
constexpr int kCharacterPause = 2;

// True if no client has grabbed the keyboard, as a screen lock or another program's
// menu does. A client with a grab would receive the keys, whichever window has the
// focus.
bool isKeyboardFree(const X11Screen& screen)
{
    Display* display = screen.display();
    const int answer =
        XGrabKeyboard(display, screen.root(), False, GrabModeAsync, GrabModeAsync, CurrentTime);
    if (answer == GrabSuccess) XUngrabKeyboard(display, CurrentTime);
    XSync(display, False);
    return answer == GrabSuccess;
}

void requireTyping(const X11Screen& screen)
{
    int unused = 0;
    if (!XTestQueryExtension(screen.display(), &unused, &unused, &unused, &unused))
        throwDesktopError(std::errc::function_not_supported, "the screen takes no keys");
}

// An event and the keys that produce it.
struct Step {
    KeyEvent event;
    KeyPlace place;
    bool isCommand = false; // Control or Alt is held
};

std::vector<Step> stepsFor(std::span<const KeyEvent> keys, const X11Screen& screen)
{
    const X11Keyboard keyboard(screen);
    std::vector<Step> steps;
    int held = 0;
    for (const KeyEvent& event : keys) {
        const bool starts = event.key == Key::Control || event.key == Key::Alt;
        if (starts) held += event.action == KeyAction::Press ? 1 : -1;
        steps.push_back(
            {event, held ? keyboard.placeOfCommand(event) : keyboard.placeOf(event), held > 0});
    }
    return steps;
}

class KeyPlayer {
public:
    KeyPlayer(const X11Screen& screen, const X11Windows& windows)
        : screen_(screen), windows_(windows)
    {
    }
    ~KeyPlayer() // also releases the keys when an exception interrupted the sending
    {
        for (const KeyCode key : held_)
            XTestFakeKeyEvent(screen_.display(), key, False, CurrentTime);
        XSync(screen_.display(), False);
    }
    KeyPlayer(const KeyPlayer&) = delete;
    KeyPlayer& operator=(const KeyPlayer&) = delete;

    void play(const Step& step)
    {
        switch (step.event.action) {
        case KeyAction::Press:
            whileVerified([&] { press(step.place.code); });
            break;
        case KeyAction::Release:
            release(step.place.code);
            break;
        case KeyAction::Stroke:
            whileVerified([&] { stroke(step.place); });
            break;
        }
        sleepMilliseconds(pauseBehind(step));
    }

private:
    static int pauseBehind(const Step& step)
    {
        if (step.isCommand || step.event.key == Key::Alt) return kMenuPause;
        return step.event.key == Key::Character ? kCharacterPause : kKeyPause;
    }

    // The server is grabbed, so the focus can't change between the check and the
    // key.
    void whileVerified(const std::function<void()>& keys)
    {
        XGrabServer(screen_.display());
        const bool verified = windows_.haveKeyboard();
        if (verified) keys();
        XUngrabServer(screen_.display());
        XSync(screen_.display(), False);
        screen_.check();
        if (!verified)
            throwDesktopError(std::errc::operation_canceled, "another window has the keyboard");
    }

    void stroke(const KeyPlace& place)
    {
        std::vector<KeyCode> own = place.held; // without those that are already down
        std::erase_if(own, [this](KeyCode key) { return isHeld(key); });
        for (const KeyCode key : own)
            press(key);
        press(place.code);
        release(place.code);
        for (const KeyCode key : own)
            release(key);
    }

    bool isHeld(KeyCode key) const { return std::ranges::find(held_, key) != held_.end(); }

    void press(KeyCode key)
    {
        held_.push_back(key);
        XTestFakeKeyEvent(screen_.display(), key, True, CurrentTime);
    }
    void release(KeyCode key)
    {
        std::erase(held_, key);
        XTestFakeKeyEvent(screen_.display(), key, False, CurrentTime);
        XFlush(screen_.display());
    }

    const X11Screen& screen_;
    const X11Windows& windows_;
    std::vector<KeyCode> held_;
};

// A window processes its messages in order, so its answer to a ping shows that the
// keys before it have been processed.
class Question {
public:
    Question(const X11Screen& screen, Window window) : screen_(screen), window_(window)
    {
        static long lastNumber = 0;
        number_ = ++lastNumber;
        // Toolkits differ in the event mask with which they send the answer.
        XSelectInput(screen.display(), screen.root(), StructureNotifyMask | SubstructureNotifyMask);
        screen.send(window, window, "WM_PROTOCOLS", {ping(), number_, static_cast<long>(window)},
                    NoEventMask);
    }

    // A window that no longer exists won't answer.
    bool isAnswered() const
    {
        while (XPending(screen_.display())) {
            XEvent event;
            XNextEvent(screen_.display(), &event);
            if (isAnswer(event)) return true;
        }
        XWindowAttributes attributes;
        return !XGetWindowAttributes(screen_.display(), window_, &attributes);
    }

    static bool isUnderstood(const X11Screen& screen, Window window)
    {
        const auto known = screen.numbers(window, "WM_PROTOCOLS", AnyPropertyType);
        return std::ranges::find(known, screen.atom("_NET_WM_PING")) != known.end();
    }

private:
    long ping() const { return static_cast<long>(screen_.atom("_NET_WM_PING")); }
    bool isAnswer(const XEvent& event) const
    {
        return event.type == ClientMessage && event.xclient.data.l[0] == ping() &&
               event.xclient.data.l[1] == number_;
    }

    const X11Screen& screen_;
    Window window_;
    long number_ = 0;
};

// Pings twice: a toolkit may answer the first ping before it passes the keys on to
// the program. A window that is busy for long or doesn't support pings isn't waited
// for.
void awaitDone(const X11Screen& screen, Window window, const std::function<void()>& meanwhile)
{
    if (window == None || !Question::isUnderstood(screen, window)) return;
    for (int time = 0; time < 2; ++time) {
        const Question question(screen, window);
        if (!screen.waitFor(
                kPatience, [&] { return question.isAnswered(); }, meanwhile))
            return;
        sleepMilliseconds(kKeyPause);
    }
}

void activate(const X11Screen& screen, Window window)
{
    screen.send(screen.root(), window, "_NET_ACTIVE_WINDOW", {kAsPager, CurrentTime, None},
                SubstructureRedirectMask | SubstructureNotifyMask);
    XFlush(screen.display());
}

bool isStarting(std::int32_t processId)
{
    const auto age = timeSinceStart(processId);
    return age && *age < kStartPatience;
}

// Throws if the process has no window. A process that is starting may still show one.
X11Windows shownWindows(const X11Screen& screen, std::int32_t processId,
                        const std::function<void()>& meanwhile)
{
    std::optional<X11Windows> windows;
    const auto look = [&] {
        try {
            windows.emplace(screen, processId).top();
            return true;
        } catch (const std::system_error& failure) {
            if (failure.code() != std::errc::no_such_process || !isStarting(processId)) throw;
            return false;
        }
    };
    // The look itself throws when the patience is used up.
    while (!screen.waitFor(kPatience, look, meanwhile)) {
    }
    return *windows;
}

}

void activateProcess(std::int32_t processId, const std::function<void()>& meanwhile)
{
    const X11Screen screen;
    const X11Windows windows = shownWindows(screen, processId, meanwhile);
    activate(screen, windows.top());
    const bool done = screen.waitFor(kPatience, [&] {
        return windows.active() != None && windows.haveKeyboard() && isKeyboardFree(screen);
    });
    if (!done) throwDesktopError(std::errc::timed_out, "the window didn't take the keyboard");
}

void bringToFront(std::uintptr_t window)
{
    try {
        const X11Screen screen;
        activate(screen, static_cast<Window>(window));
    } catch (const std::system_error&) {
        // The screen is gone, and the window with it.
    }
}

void playKeys(std::int32_t processId, std::span<const KeyEvent> keys,
              const std::function<void()>& meanwhile)
{
    const X11Screen screen;
    requireTyping(screen);
    const X11Windows windows(screen, processId);
    // All keys are looked up before the first one is sent, so an unknown key leaves
    // nothing half typed.
    const std::vector<Step> steps = stepsFor(keys, screen);
    // Determined before the keys are sent, because they may open another window.
    const Window asked = windows.active();
    {
        const FreeModifiers freely(screen);
        KeyPlayer player(screen, windows);
        for (const Step& step : steps)
            player.play(step);
    }
    awaitDone(screen, asked, meanwhile);
}

}
