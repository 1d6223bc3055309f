// The file that is being looked at and can't be opened itself, as a copy of this
// engine's own format: a Jet file, or one that was left with a journal (a program
// was killed) on a medium that can't be written.
//
// The original may be an old backup on a medium that can't be written, so the
// copy lies among the system's temporary files, where it loses its name as soon
// as it is open: however the program ends, nothing is left. It is kept, also
// while no database stands on it, until another such file is opened or the one
// behind it changes.
#pragma once
#include "platform/dao/connection.h"
#include "platform/system/file_stamp.h"

namespace tolvek {

class JetCopy {
public:
    // Read-only, under the original's name. Failures as importJet's.
    std::shared_ptr<Connection> of(const std::filesystem::path& source);
    bool isKept(const std::shared_ptr<Connection>& connection) const { return kept_ == connection; }
    void drop();

private:
    FileStamp stamp_;
    std::shared_ptr<Connection> kept_;
};

}
