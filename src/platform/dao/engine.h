// The state that DBEngine, Workspace and Database share: the open connections, the
// sessions and the one transaction of workspace 0.
#pragma once
#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "platform/dao/hold.h"
#include "platform/dao/jet_copy.h"

#include <vector>

namespace tolvek {

// The absolute path of the file; it identifies a connection.
std::filesystem::path absoluteOf(TextView path);

struct Database::State : OpenHandle {
    using OpenHandle::OpenHandle;
};

class Engine {
public:
    static Engine& instance();

    std::shared_ptr<Connection> acquire(const std::filesystem::path& path);
    // The same, only for a file of this engine's own format. Null for a file that can be
    // shown only through a private copy: a Jet file, or one with a journal where nothing
    // can be written. Error `ifForeign` for a database of another program.
    std::shared_ptr<Connection> acquireOwn(const std::filesystem::path& path, int ifForeign);
    std::shared_ptr<Connection> created(const std::filesystem::path& path);
    // Call when a database of this connection was closed. Ends the transaction in which
    // the connection took part, and also one in which nothing has been done yet: left
    // open, it would make the next transaction a nested one that never commits.
    void released(const std::shared_ptr<Connection>& connection);

    void enterSession() { ++sessions_; }
    void leaveSession();
    void enterGroup(std::chrono::milliseconds longest);
    void leaveGroup();
    void rest();
    void restAll();
    void abandon();
    // The existing hold on that file, even if it was taken under another name, or a new
    // one.
    std::shared_ptr<Hold> hold(const std::filesystem::path& path, bool asDatabase);

    void begin() { ++depth_; }
    void commit();
    void rollback();
    // Call before a statement that writes: adds the connection to the workspace's
    // transaction if there is one.
    void prepareToWrite(const std::shared_ptr<Connection>& connection);

private:
    using Connections = std::vector<std::shared_ptr<Connection>>;
    bool isJoined(const std::shared_ptr<Connection>& connection) const;
    std::shared_ptr<Connection> knownAs(const std::filesystem::path& path);
    std::shared_ptr<Connection> openForHold(const std::filesystem::path& path);
    std::shared_ptr<Hold> holdOn(const std::filesystem::path& path);
    void endTransaction();
    void closeIdle();

    Connections open_;
    Connections inTransaction_;
    std::vector<std::weak_ptr<Hold>> holds_;
    JetCopy jetCopy_;
    std::optional<std::chrono::milliseconds> group_; // how long one may last
    int sessions_ = 0;
    int depth_ = 0;
};

}
