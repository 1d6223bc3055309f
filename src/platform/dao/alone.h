// Keeps other programs away from a database file.
//
// While a database isn't locked, another program may replace its file at any moment.
// An open connection then goes on reading the old file; writing is error 3356.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>
#include <memory>

namespace tolvek {

class Hold;

// Locks a database while it is copied and then exchanged or emptied. Other programs
// get error 3356, and so does this one when another program has the file open. An
// Alone on a file that is already locked by an outer Alone shares its lock. Both that
// and confirm() check that nobody has changed the file since it was first locked; if
// somebody has, error 3356. A file that is missing, or can't be opened for writing,
// isn't locked.
class Alone {
public:
    // File: the content isn't read, so the file may hold anything.
    enum class With { Database, File };
    explicit Alone(TextView path, With with = With::Database);
    void confirm() const;
    // Call when this program has moved or exchanged the file: the name is unlocked.
    void end() const;

private:
    std::filesystem::path name_;
    std::shared_ptr<Hold> hold_;
};

// Puts every file at rest, also those with an open Database: rolls back open
// transactions, checkpoints the log and unlocks the file. Call before the program
// waits for its user, who may be away for a night. A file that can't be put at rest
// is left until it is closed. Never throws.
void putAllAtRest();

}
