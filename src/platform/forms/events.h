// How an event of the screen reaches the program's code, and what becomes of
// an exception on the way.
//
// No exception ever passes through Qt. A RuntimeError that an event procedure
// lets out is an untrapped one: the untrapped handler gets it. Any other
// exception (the end of the program, as a test's hook throws it) is kept, ends
// the innermost wait (ShowModal, MsgBox, InputBox, DoEvents, runApplication) or
// the Load, Show or Unload that fired the event, and leaves from there; a test
// that clicked a control by itself calls rethrowKept().
#pragma once
#include "platform/runtime/runtime_error.h"

#include <QObject>

#include <functional>
#include <utility>

namespace tolvek {

using UntrappedHandler = std::function<void(const RuntimeError&)>;

// The default handler shows the box 実行時エラー '13': and then calls the end
// function. An empty function gives the default back.
void setUntrappedHandler(UntrappedHandler handler);
void reportUntrapped(const RuntimeError& error);

// Ends the program at once; without one the process leaves with code 0.
void setEndFunction(std::function<void()> end);

// Runs an event procedure under the rule above.
void runEvent(const std::function<void()>& procedure) noexcept;

// Throws what an event kept, if anything, and forgets it.
void rethrowKept();
bool hasKept();

// What a program does once before its first window: the end of the last window
// doesn't end it, menus and boxes have the program's face. Then its message loop.
void prepareApplication();
int runApplication();
bool isQuitting(); // the loop has ended, what it ran is being wound up

// Connects an event to a procedure: onEvent(comEnd, &CommandButton::Click, [this] { ... });
template <class Sender, class Signal, class Slot>
QMetaObject::Connection onEvent(Sender* sender, Signal signal, Slot slot)
{
    return QObject::connect(sender, signal, sender, [slot = std::move(slot)](auto... args) mutable {
        runEvent([&] { slot(args...); });
    });
}

}
