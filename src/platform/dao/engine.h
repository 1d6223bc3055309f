// What DBEngine, Workspace and Database share: the connections that are open,
// the sessions and the one transaction of workspace 0.
#pragma once
#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "platform/dao/hold.h"
#include "platform/dao/jet_copy.h"

#include <vector>

namespace tolvek {

// The file that the text means, by its whole name: the key of a connection.
std::filesystem::path absoluteOf(TextView path);

struct Database::State : OpenHandle {
    using OpenHandle::OpenHandle;
};

class Engine {
public:
    static Engine& instance();

    std::shared_ptr<Connection> acquire(const std::filesystem::path& path);
    // The same for a file of this engine's own format; none for one that can only be
    // shown through a private copy: a Jet file, and one that was left with a journal
    // where nothing can be written. Somebody else's database is error `ifForeign`.
    std::shared_ptr<Connection> acquireOwn(const std::filesystem::path& path, int ifForeign);
    std::shared_ptr<Connection> created(const std::filesystem::path& path);
    // A database of this connection was closed. Ends the transaction that it
    // took part in, and one in which nothing was done yet: left open, it would
    // swallow the next one's commit.
    void released(const std::shared_ptr<Connection>& connection);

    void enterSession() { ++sessions_; }
    void leaveSession();
    void rest();
    void restAll();
    void abandon();
    // The hold on that file, under whatever name it is held; else a new one.
    std::shared_ptr<Hold> hold(const std::filesystem::path& path, bool asDatabase);

    void begin() { ++depth_; }
    void commit();
    void rollback();
    // Before a statement that writes: takes the connection into the
    // workspace's transaction if there is one.
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
    int sessions_ = 0;
    int depth_ = 0;
};

}
