// A database file that is kept to this program, from a look at it to its exchange.
//
// The lock is the engine's own, so every other program that opens the file with
// the engine finds it taken. The system drops it when another descriptor of the
// file is closed in this process, and it is let go before a box; so the hold also
// remembers what the file was. confirm() takes the lock anew and compares: nothing
// that another program has done in between goes unseen.
//
// The file may be renamed while it is held. A system that renames no open file
// needs the hold closed right before that; nobody else can have it open there.
#pragma once
#include "platform/dao/open_handle.h"
#include "platform/system/file_stamp.h"

#include <optional>

namespace tolvek {

class EngineLock;

class Hold {
public:
    // The lock is that of the file's own connection if there is one. 3356 when
    // another program is at work on the file. Nothing there, or nothing that could
    // be opened or written: nothing is held.
    Hold(std::filesystem::path path, std::shared_ptr<Connection> own);
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

    bool isOn(const std::filesystem::path& path) const;
    void confirm(); // 3356 when it isn't the file that it was
    void letGo();
    // The program itself has moved or exchanged what had this name. Another name of
    // the held file (a .Bak that is still linked to it) may go without an end.
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
