// Other programs and the databases of this one.
//
// Another program may put another file in a database's place at any moment that it
// isn't locked. What is open then goes on reading the old file; writing is 3356.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>
#include <memory>

namespace tolvek {

class Hold;

// Keeps other programs from a database while it is copied and then exchanged or
// emptied: for them it is locked, 3356, and 3356 it is here when one of them is at
// work on it. An Alone on the same file inside of another belongs to it; that and
// confirm() make sure that nobody has changed the file since, else 3356. A file
// that is missing or can't be opened and written isn't held.
class Alone {
public:
    // File: whatever is in it, nothing of it is read.
    enum class With { Database, File };
    explicit Alone(TextView path, With with = With::Database);
    void confirm() const;
    // This program has moved or exchanged the file: the name is free.
    void end() const;

private:
    std::filesystem::path name_;
    std::shared_ptr<Hold> hold_;
};

// Puts every file at rest, also those that a Database holds: rolls back what is
// open, folds in the log, lets other programs in. Before the program waits for its
// user, who may be away for a night. A file that can't be put at rest stays for its
// closing; nothing is thrown.
void putAllAtRest();

}
