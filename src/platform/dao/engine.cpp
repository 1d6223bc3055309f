#include "platform/dao/engine.h"

#include "platform/dao/schema_check.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace tolvek {

namespace {

RuntimeError noTransaction()
{
    return RuntimeError(
        3034, u"トランザクションを開始せずに、コミットまたはロールバックしようとしました。",
        nullptr);
}

// Runs the work on every connection, even after a failure. The first failure is rethrown
// after all have run.
template <class Connections, class Work>
void eachInTurn(const Connections& connections, const Work& work)
{
    std::exception_ptr first;
    for (const auto& connection : connections) {
        try {
            work(*connection);
        } catch (const RuntimeError&) {
            if (!first) first = std::current_exception();
        }
    }
    if (first) std::rethrow_exception(first);
}

}

std::filesystem::path absoluteOf(TextView path)
{
    return std::filesystem::absolute(existingPath(path)).lexically_normal();
}

OpenHandle::OpenHandle(std::shared_ptr<Connection> opened) : connection(std::move(opened))
{
    ++connection->holders;
}

OpenHandle::~OpenHandle()
{
    try {
        close();
    } catch (const RuntimeError&) {
        // Committed rows are complete in the file or in its log, from which the next
        // opening recovers them.
    }
}

void OpenHandle::close()
{
    if (!connection) return;
    const auto leaving = std::exchange(connection, nullptr);
    --leaving->holders;
    Engine::instance().released(leaving);
}

// Never destroyed: databases held by other static objects may close later.
Engine& Engine::instance()
{
    static Engine& engine = *new Engine;
    return engine;
}

std::shared_ptr<Connection> Engine::acquire(const std::filesystem::path& path)
{
    if (const auto own = acquireOwn(path, 3343)) return own;
    return jetCopy_.of(path);
}

// A connection whose file has moved is forgotten: the name now means another file.
std::shared_ptr<Connection> Engine::knownAs(const std::filesystem::path& path)
{
    const auto known = std::find_if(open_.begin(), open_.end(), [&](const auto& connection) {
        return connection->path() == path;
    });
    if (known == open_.end()) return nullptr;
    if (!(*known)->hasMoved()) return *known;
    open_.erase(known);
    return nullptr;
}

std::shared_ptr<Connection> Engine::acquireOwn(const std::filesystem::path& path, int ifForeign)
{
    if (const auto known = knownAs(path)) return known;
    if (const auto held = holdOn(path)) held->letGo(); // its lock is against this program too
    const auto opened = Connection::open(path);
    if (!opened) return nullptr;
    requireArchive(*opened, ifForeign);
    return open_.emplace_back(opened);
}

std::shared_ptr<Connection> Engine::created(const std::filesystem::path& path)
{
    return open_.emplace_back(Connection::create(path));
}

// A connection that has been forgotten because its file moved must be closed here, since
// closeIdle doesn't know it. A private copy stays for the next opening.
void Engine::released(const std::shared_ptr<Connection>& connection)
{
    if (connection->holders > 0) return;
    if (depth_ > 0 && (isJoined(connection) || inTransaction_.empty())) rollback();
    if (sessions_ > 0 || !connection->isOpen()) return;
    closeIdle();
    const bool isKnown = std::find(open_.begin(), open_.end(), connection) != open_.end();
    if (!isKnown && !jetCopy_.isKept(connection)) connection->close();
}

bool Engine::isJoined(const std::shared_ptr<Connection>& connection) const
{
    return std::find(inTransaction_.begin(), inTransaction_.end(), connection) !=
           inTransaction_.end();
}

// A connection whose database is still open can't be closed, but it leaves the log.
void Engine::leaveSession()
{
    if (sessions_ == 0 || --sessions_ > 0) return;
    if (depth_ > 0) rollback();
    rest();
    eachInTurn(open_, [](Connection& connection) { connection.settle(); });
}

void Engine::enterGroup(std::chrono::milliseconds longest)
{
    group_ = longest;
}

void Engine::leaveGroup()
{
    if (!std::exchange(group_, std::nullopt)) return;
    eachInTurn(open_, [](Connection& connection) { connection.endGroup(); });
}

void Engine::rest()
{
    closeIdle();
}

// A transaction that is still open when a box is shown has failed, and the box reports
// it; so it is ended here.
void Engine::restAll()
{
    endTransaction();
    for (const auto& hold : holds_)
        if (const auto held = hold.lock()) held->letGo();
    eachInTurn(open_, [](Connection& connection) { connection.rest(); });
    closeIdle();
}

std::shared_ptr<Hold> Engine::holdOn(const std::filesystem::path& path)
{
    std::erase_if(holds_, [](const auto& hold) { return hold.expired(); });
    for (const auto& hold : holds_)
        if (const auto held = hold.lock(); held->isOn(path)) return held;
    return nullptr;
}

// A file that isn't an archive is locked in another way and reported by whoever opens it
// next. After a disk error there is no hold: that other lock would also keep this program
// from opening its own database.
std::shared_ptr<Connection> Engine::openForHold(const std::filesystem::path& path)
{
    try {
        return fileExists(path) ? acquireOwn(path, 3343) : nullptr;
    } catch (const RuntimeError& error) {
        if (error.number() != 3343 && error.number() != 3041) throw;
        return nullptr;
    }
}

std::shared_ptr<Hold> Engine::hold(const std::filesystem::path& path, bool asDatabase)
{
    if (const auto held = holdOn(path)) {
        held->confirm();
        return held;
    }
    auto made = std::make_shared<Hold>(path, asDatabase ? openForHold(path) : knownAs(path));
    holds_.push_back(made);
    return made;
}

void Engine::closeIdle()
{
    Connections idle;
    const auto unheld = [](const auto& connection) { return connection->holders == 0; };
    std::copy_if(open_.begin(), open_.end(), std::back_inserter(idle), unheld);
    std::erase_if(open_, unheld);
    eachInTurn(idle, [](Connection& connection) { connection.close(); });
}

void Engine::abandon()
{
    endTransaction();
    group_.reset();
    sessions_ = 0;
    jetCopy_.drop();
    eachInTurn(std::exchange(open_, {}), [](Connection& connection) { connection.close(); });
}

void Engine::endTransaction()
{
    depth_ = 0;
    inTransaction_.clear();
}

// If the engine itself has rolled back a connection's transaction (disk full, a failed
// write), part of the work is lost, so the rest must not be committed.
void Engine::commit()
{
    if (depth_ == 0) throw noTransaction();
    if (depth_ > 1) {
        --depth_;
        return;
    }
    // All are checked before the first one commits.
    for (const auto& connection : inTransaction_)
        if (!connection->isOpen() || !connection->inTransaction()) {
            rollback();
            throw noTransaction();
        }
    for (const auto& connection : inTransaction_)
        connection->commit(group_.value_or(std::chrono::milliseconds::zero()));
    endTransaction();
}

void Engine::rollback()
{
    if (depth_ == 0) throw noTransaction();
    // Cleared before the work, so that a rollback that fails isn't repeated later.
    const Connections all = std::exchange(inTransaction_, {});
    endTransaction();
    eachInTurn(all, [](Connection& connection) {
        if (connection.isOpen()) connection.rollback();
    });
}

void Engine::prepareToWrite(const std::shared_ptr<Connection>& connection)
{
    const bool joined = isJoined(connection);
    if (joined && !connection->inTransaction()) throw noTransaction();
    connection->prepareToWrite(sessions_ > 0);
    if (joined || depth_ == 0) return;
    connection->begin(group_.has_value());
    inTransaction_.push_back(connection);
}

}
