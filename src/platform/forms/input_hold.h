// A hold: keeps the user's input back while the program isn't ready for it, for
// example while a form loads or unloads, or while a list in memory is empty because
// it is about to be filled.
//
//     const InputHold hold;
//
// Yields during the hold still paint and tick, but no press, key or close box
// arrives, whatever its path: the window system's queue, events sent or posted to a
// window (input methods), or calls of the control (assistive programs, shortcuts).
// Input is delivered in its order after the outermost hold has ended, at a later
// turn of the event loop, and meets the state of that moment: a control that is
// gone, disabled or below a modal window discards it.
//
// Holds nest. A wait for the user (WaitScope: a box, a modal form) suspends them
// for the duration of its own loop, because otherwise nobody could answer it; the
// other windows are blocked by its modality. Input kept before the wait stays kept
// until its own hold has ended.
#pragma once
#include <QObject>

#include <cstddef>
#include <functional>

namespace tolvek {

class InputHold {
public:
    InputHold();
    ~InputHold();
    InputHold(const InputHold&) = delete;
    InputHold& operator=(const InputHold&) = delete;

    static bool isHeld();

    // Used by every WaitScope.
    class Suspension {
    public:
        Suspension();
        ~Suspension();
        Suspension(const Suspension&) = delete;
        Suspension& operator=(const Suspension&) = delete;
        // The wait is over, though its loop still runs to the end of its turn: from
        // here on input is kept until whoever waited yields.
        void end();

    private:
        std::size_t depth_;
    };
};

// For an action of the user on a window. Returns true if it is kept back; `again`
// then runs afterwards, unless the window is gone or below a modal one.
bool keptBack(QObject& window, std::function<void()> again);

// For a press of a control, which may be a call that passed through no queue.
// Returns whether to handle it now. A press below a modal window is discarded, as
// it is on the screen; a press during a hold is repeated later by `again`.
bool isHeard(QObject& control, std::function<void()> again);

}
