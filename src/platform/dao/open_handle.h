// One use of a connection: shared by a Database and its recordsets, or owned by a hold
// on a file.
#pragma once
#include "platform/dao/connection.h"

#include <memory>

namespace tolvek {

struct OpenHandle {
    explicit OpenHandle(std::shared_ptr<Connection> connection);
    ~OpenHandle(); // as close(), but failures are silent
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    void close();
    bool isOpen() const { return connection && connection->isOpen(); }
    std::shared_ptr<Connection> connection; // null once closed
};

}
