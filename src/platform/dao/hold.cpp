#include "platform/dao/hold.h"

#include "platform/dao/dao_errors.h"
#include "platform/dao/probe_vfs.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "platform/system/process.h"

namespace tolvek {

// The lock that the engine takes while it writes, but on any file: the file's content
// isn't read and needn't be a database.
class EngineLock {
public:
    // The engine opens the file here but doesn't read it.
    explicit EngineLock(const std::filesystem::path& path) : name_(pathText(path))
    {
        const std::u8string bytes = path.u8string();
        const int code = sqlite3_open_v2(reinterpret_cast<const char*>(bytes.c_str()), &handle_,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE, probeVfs());
        if (code == SQLITE_OK)
            sqlite3_file_control(handle_, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
    }
    ~EngineLock()
    {
        if (isOpen()) letGo();
        sqlite3_close(handle_);
    }
    EngineLock(const EngineLock&) = delete;
    EngineLock& operator=(const EngineLock&) = delete;

    bool isOpen() const { return file_ != nullptr; }
    // The engine's own waiting works only for statements, so this waits by itself.
    void take()
    {
        constexpr int kNap = 10; // milliseconds
        for (int left = Connection::patience();; left -= kNap) {
            const int code = locked();
            if (code == SQLITE_OK) return;
            if ((code & 0xFF) != SQLITE_BUSY || left <= 0)
                throw sqliteError(code, TextView(), name_);
            sleepMilliseconds(kNap);
        }
    }
    void letGo() { file_->pMethods->xUnlock(file_, SQLITE_LOCK_NONE); }

private:
    // The engine's levels of locks have to be taken in this order.
    int locked()
    {
        for (const int level : {SQLITE_LOCK_SHARED, SQLITE_LOCK_RESERVED, SQLITE_LOCK_EXCLUSIVE}) {
            const int code = file_->pMethods->xLock(file_, level);
            if (code == SQLITE_OK) continue;
            letGo();
            return code;
        }
        return SQLITE_OK;
    }
    Text name_;
    sqlite3* handle_ = nullptr;
    sqlite3_file* file_ = nullptr;
};

namespace {

// A file that is gone counts as changed. It must not be 53, which callers ignore.
FileStamp stampOf(const std::filesystem::path& path)
{
    if (!fileExists(path)) throw lockedError(pathText(path));
    return asFileError([&] { return fileStamp(path); });
}

}

Hold::Hold(std::filesystem::path path, std::shared_ptr<Connection> own) : path_(std::move(path))
{
    if (!fileExists(path_) || isReadOnly(path_)) return; // it isn't going to be written
    if (own) {
        own_ = std::make_unique<OpenHandle>(std::move(own));
        own_->connection->keepOthersOut();
        version_ = own_->connection->version();
    } else {
        auto lock = std::make_unique<EngineLock>(path_);
        if (!lock->isOpen()) return;
        lock->take();
        stamp_ = stampOf(path_);
        lock_ = std::move(lock);
    }
}

Hold::~Hold()
{
    try {
        letGo();
    } catch (const RuntimeError&) {
        // The lock is released at the latest when the file is closed.
    }
}

bool Hold::isOn(const std::filesystem::path& path) const
{
    std::error_code none;
    if (ended_ || (!own_ && !lock_)) return false;
    return path == path_ || std::filesystem::equivalent(path, path_, none);
}

bool Hold::isUnchanged()
{
    if (stamp_) return stampOf(path_) == *stamp_;
    return own_->isOpen() && !own_->connection->hasMoved() &&
           own_->connection->version() == version_;
}

void Hold::confirm()
{
    if (!own_ && !lock_) return;
    letGo();
    if (own_ && own_->isOpen()) own_->connection->keepOthersOut();
    if (lock_) lock_->take();
    if (!isUnchanged()) throw lockedError(pathText(path_));
}

void Hold::letGo()
{
    if (lock_) lock_->letGo();
    if (own_ && own_->isOpen()) own_->connection->letOthersIn();
}

void Hold::end(const std::filesystem::path& name)
{
    ended_ = ended_ || name == path_;
}

}
