// The search thread's events as signals of the window's thread.
#pragma once
#include "letters/desk.h"

#include <QObject>

namespace tolvek {

using LibraryPointer = std::shared_ptr<const Library>;
using AnswerPointer = std::shared_ptr<const Answer>;

class DeskSignals : public QObject {
    Q_OBJECT
public:
    explicit DeskSignals(const DeskSettings& settings);

    Desk& desk() { return desk_; }

signals:
    void libraryChanged(const tolvek::LibraryPointer& library);
    void answered(const tolvek::AnswerPointer& answer);

private:
    DeskEvents events();

    Desk desk_; // its destructor waits for the thread: no event comes later
};

}
