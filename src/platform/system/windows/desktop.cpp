#include "platform/system/desktop.h"

#include "platform/system/process.h"
#include "platform/system/windows/keyboard.h"
#include "platform/system/windows/process_windows.h"
#include "platform/system/windows/system_failure.h"

#include <chrono>

namespace tolvek {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPatience{2000};
constexpr int kNap = 10; // milliseconds, as are these:
// A menu that is opening loses a letter that arrives earlier.
constexpr int kMenuPause = 60;
constexpr int kKeyPause = 10;
constexpr int kCharacterPause = 2;

bool isReached(const std::function<bool()>& condition)
{
    for (const auto until = Clock::now() + kPatience; !condition();) {
        if (Clock::now() >= until) return false;
        sleepMilliseconds(kNap);
    }
    return true;
}

int pauseAfter(const KeyEvent& event, bool isCommand)
{
    if (isCommand || event.key == Key::Alt) return kMenuPause;
    return event.key == Key::Character ? kCharacterPause : kKeyPause;
}

// A window takes its messages in order, so its answer shows that it has the keys. Asked
// twice: the first answer may come before the keys are passed on to the program. A window
// that is busy for long isn't waited for. The question is put in slices, because the window
// may itself wait for this program.
void awaitDone(HWND window, const std::function<void()>& meanwhile)
{
    constexpr UINT kSlice = 20;
    for (int time = 0; time < 2 && ::IsWindow(window); ++time)
        isReached([&] {
            DWORD_PTR answer = 0;
            const bool answered =
                ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kSlice, &answer) != 0;
            if (meanwhile) meanwhile();
            return answered || !::IsWindow(window);
        });
}

}

// The system lets only the program that has the user's attention pass it on; that is this
// one while it runs a command of the user's.
void activateProcess(std::int32_t processId)
{
    const ProcessWindows windows(processId);
    const HWND window = windows.top();
    if (::IsIconic(window)) ::ShowWindowAsync(window, SW_RESTORE);
    const bool done = isReached([&] {
        if (windows.haveKeyboard()) return true;
        ::SetForegroundWindow(window);
        return windows.haveKeyboard();
    });
    if (!done) throwSystemError(std::errc::timed_out, "the window didn't take the keyboard");
}

void playKeys(std::int32_t processId, std::span<const KeyEvent> keys,
              const std::function<void()>& meanwhile)
{
    const ProcessWindows windows(processId);
    // Determined before the keys are sent, because they may open another window.
    const HWND asked = ::GetForegroundWindow();
    const Keyboard keyboard(asked);
    // All keys are looked up before the first one is sent, so an unknown key leaves
    // nothing half typed.
    const std::vector<KeyStep> steps = keyboard.stepsFor(keys);
    {
        const PlainTyping plainly(asked);
        KeyPlayer player([&] { return windows.haveKeyboard(); });
        for (const KeyStep& step : steps) {
            player.play(step);
            sleepMilliseconds(pauseAfter(step.event, step.isCommand));
        }
    }
    awaitDone(asked, meanwhile);
}

}
