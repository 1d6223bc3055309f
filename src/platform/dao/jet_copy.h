// A private copy, in this engine's own format, of a file that can be shown but not
// opened: a Jet file, or a file that a killed program left with a journal on a medium
// that can't be written.
//
// The original may be an old backup on a read-only medium, so the copy is in the
// system's temporary folder. Its name is removed as soon as it is open, so nothing is
// left however the program ends. The copy is kept, also while no database uses it, until
// another such file is opened or the original changes.
#pragma once
#include "platform/dao/connection.h"
#include "platform/system/files.h"

namespace tolvek {

class JetCopy {
public:
    // A read-only connection under the original's name. Failures as those of importJet.
    std::shared_ptr<Connection> of(const std::filesystem::path& source);
    bool isKept(const std::shared_ptr<Connection>& connection) const { return kept_ == connection; }
    void drop();

private:
    FileStamp stamp_;
    std::shared_ptr<Connection> kept_;
};

}
