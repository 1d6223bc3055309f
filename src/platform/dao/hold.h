// Locks a database file against other programs, from reading it to its exchange.
//
// The lock is the engine's own, so every other program that opens the file with the
// engine finds it locked. The lock may be lost: the system drops it when another
// descriptor of the file is closed in this process, and it is released before a box.
// So the hold also remembers the state of the file. confirm() takes the lock again and
// compares, so that no change by another program goes unnoticed.
//
// The file may be renamed while it is held. On a system that can't rename open files,
// the hold must be closed right before the rename; there, no other program can have the
// file open.
#pragma once
#include "platform/dao/connection.h"
#include "platform/system/files.h"

#include <memory>
#include <optional>

namespace tolvek {

// One use of a connection: shared by a Database and its recordsets, or owned by a hold
// on a file.
struct OpenHandle {
    explicit OpenHandle(std::shared_ptr<Connection> connection);
    ~OpenHandle(); // as close(), but failures are silent
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    void close();
    bool isOpen() const { return connection && connection->isOpen(); }
    std::shared_ptr<Connection> connection; // null once closed
};

class EngineLock;

class Hold {
public:
    // Uses the lock of the file's own connection if there is one. 3356 when another
    // program has the file open. If the file is missing, or can't be opened for writing,
    // nothing is locked.
    Hold(std::filesystem::path path, std::shared_ptr<Connection> own);
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    bool isOn(const std::filesystem::path& path) const;
    void confirm(); // 3356 when the file has changed
    void letGo();
    // Call when the program itself has moved or exchanged the file of this name. Another
    // name of the file (a .Bak that is linked to it) may be removed without ending the
    // hold.
    void end(const std::filesystem::path& name);

private:
    bool isUnchanged();

    std::filesystem::path path_;
    std::unique_ptr<OpenHandle> own_;
    std::unique_ptr<EngineLock> lock_;
    std::optional<FileStamp> stamp_;
    Text version_;
    bool ended_ = false;
};

}
