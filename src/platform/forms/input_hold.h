// Keeps the user's input back while the program isn't ready to meet it: a form
// loads or unloads, a list in memory is empty because it is about to be filled.
//
//     const InputHold hold;
//
// Yields inside its scope still paint and tick, but no press, key or close box
// arrives, by whatever way it comes: through the window system's queue, sent or
// posted to a window (input methods), or as a call of the control (assistive
// programs, shortcuts). It arrives once the outermost hold has ended, in its
// order, at a later turn of the event loop, and meets the state of that moment:
// a control that is gone, switched off or below a modal window swallows it.
//
// Holds nest. A wait for the user (WaitScope: a box, a modal form) suspends
// them for the length of its own loop, or nobody could answer it; the modality
// keeps the other windows shut meanwhile. What was kept before the wait stays
// kept until its own hold has ended.
#pragma once
#include <QObject>

#include <functional>

namespace tolvek {

class InputHold {
public:
    InputHold();
    ~InputHold();
    InputHold(const InputHold&) = delete;
    InputHold& operator=(const InputHold&) = delete;

    static bool isHeld();

    // Part of every WaitScope.
    class Suspension {
    public:
        Suspension();
        ~Suspension();
        Suspension(const Suspension&) = delete;
        Suspension& operator=(const Suspension&) = delete;
    };
};

// For what the user makes a window do: true when it is kept back; `again` then
// runs afterwards, unless the window is gone or below a modal one.
bool keptBack(QObject& window, std::function<void()> again);

// For a press of a control, which may be a call that no queue has seen: whether
// it is to be heard now. One below a modal window is lost, as it is on the
// screen; one in a hold comes again by `again`.
bool isHeard(QObject& control, std::function<void()> again);

}
