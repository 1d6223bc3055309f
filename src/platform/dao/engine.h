// What DBEngine, Workspace and Database share: the connections that are open,
// the sessions and the one transaction of workspace 0.
#pragma once
#include "platform/dao/connection.h"
#include "platform/dao/dao.h"
#include "platform/dao/jet_copy.h"

#include <vector>

namespace tolvek {

// The file that the text means, by its whole name: the key of a connection.
std::filesystem::path absoluteOf(TextView path);

// What a Database handle and its recordsets stand on.
struct OpenHandle {
    explicit OpenHandle(std::shared_ptr<Connection> connection);
    ~OpenHandle(); // as close(), but nobody hears of a failure
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    void close();
    bool isOpen() const { return connection && connection->isOpen(); }
    std::shared_ptr<Connection> connection; // none once closed
};

struct Database::State : OpenHandle {
    using OpenHandle::OpenHandle;
};

class Engine {
public:
    static Engine& instance();

    std::shared_ptr<Connection> acquire(const std::filesystem::path& path);
    // The same for a file of this engine's own format; none for a Jet file.
    std::shared_ptr<Connection> acquireOwn(const std::filesystem::path& path);
    std::shared_ptr<Connection> created(const std::filesystem::path& path);
    // A database of this connection was closed. Ends the transaction that it
    // took part in, and one in which nothing was done yet: left open, it would
    // swallow the next one's commit.
    void released(const std::shared_ptr<Connection>& connection);

    void enterSession() { ++sessions_; }
    void leaveSession();
    void rest();
    void abandon();

    void begin() { ++depth_; }
    void commit();
    void rollback();
    // Before a statement that writes: takes the connection into the
    // workspace's transaction if there is one.
    void prepareToWrite(const std::shared_ptr<Connection>& connection);

private:
    using Connections = std::vector<std::shared_ptr<Connection>>;
    bool isJoined(const std::shared_ptr<Connection>& connection) const;
    void endTransaction();
    void closeIdle();

    Connections open_;
    Connections inTransaction_;
    JetCopy jetCopy_;
    int sessions_ = 0;
    int depth_ = 0;
};

}
