// One holder of a connection: what a Database handle and its recordsets, or a
// hold on a file, stand on.
#pragma once
#include "platform/dao/connection.h"

#include <memory>

namespace tolvek {

struct OpenHandle {
    explicit OpenHandle(std::shared_ptr<Connection> connection);
    ~OpenHandle(); // as close(), but nobody hears of a failure
    OpenHandle(const OpenHandle&) = delete;
    OpenHandle& operator=(const OpenHandle&) = delete;

    void close();
    bool isOpen() const { return connection && connection->isOpen(); }
    std::shared_ptr<Connection> connection; // none once closed
};

}
