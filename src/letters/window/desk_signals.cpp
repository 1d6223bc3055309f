#include "letters/window/desk_signals.h"

namespace tolvek {

DeskSignals::DeskSignals(const DeskSettings& settings) : desk_(events(), settings) {}

// An event that is still queued when this object goes is dropped with it.
DeskEvents DeskSignals::events()
{
    return {[this](LibraryPointer library) {
                QMetaObject::invokeMethod(
                    this, [this, library = std::move(library)] { emit libraryChanged(library); },
                    Qt::QueuedConnection);
            },
            [this](AnswerPointer answer) {
                QMetaObject::invokeMethod(
                    this, [this, answer = std::move(answer)] { emit answered(answer); },
                    Qt::QueuedConnection);
            }};
}

}
