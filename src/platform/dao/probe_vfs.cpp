#include "platform/dao/probe_vfs.h"

#include "platform/system/files.h"

#include <memory>
#include <new>
#include <sqlite3.h>
#include <system_error>

namespace tolvek {

namespace {

using std::filesystem::path;

// SQLite allocates one block per file: this record, followed by the base layer's own.
struct ProbedFile {
    sqlite3_file asSqlite;
    path* name; // null for temporary files, which aren't probed
    sqlite3_file* base() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_vfs* baseVfs = nullptr;

ProbedFile& probed(sqlite3_file* file)
{
    return *reinterpret_cast<ProbedFile*>(file);
}

sqlite3_file* base(sqlite3_file* file)
{
    return probed(file).base();
}

path pathOf(const char* name)
{
    return path(reinterpret_cast<const char8_t*>(name));
}

// SQLITE_OK or the code that SQLite expects from a failing operation.
int ask(FileOperation operation, const path& name, int failure)
{
    try {
        probeFile(operation, name);
        return SQLITE_OK;
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::no_space_on_device) return SQLITE_FULL;
        return error.code() == std::errc::permission_denied ? SQLITE_CANTOPEN : failure;
    }
}

int ask(FileOperation operation, sqlite3_file* file, int failure)
{
    const path* name = probed(file).name;
    return name ? ask(operation, *name, failure) : SQLITE_OK;
}

// The engine knows one answer of a full disk; there is that of a used-up quota too,
// and a network disk gives either as late as at the flush.
int named(sqlite3_file* file, int rc)
{
    int systemError = 0;
    if ((rc & 0xFF) != SQLITE_IOERR) return rc;
    base(file)->pMethods->xFileControl(base(file), SQLITE_FCNTL_LAST_ERRNO, &systemError);
    return isFullDisk(systemError) ? SQLITE_FULL : rc;
}

int closeFile(sqlite3_file* file)
{
    delete probed(file).name;
    probed(file).name = nullptr;
    return base(file)->pMethods ? base(file)->pMethods->xClose(base(file)) : SQLITE_OK;
}

int readFile(sqlite3_file* file, void* buffer, int size, sqlite3_int64 offset)
{
    if (const int rc = ask(FileOperation::Read, file, SQLITE_IOERR_READ)) return rc;
    return base(file)->pMethods->xRead(base(file), buffer, size, offset);
}

int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset)
{
    if (const int rc = ask(FileOperation::Write, file, SQLITE_IOERR_WRITE)) return rc;
    return named(file, base(file)->pMethods->xWrite(base(file), bytes, size, offset));
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size)
{
    if (const int rc = ask(FileOperation::Truncate, file, SQLITE_IOERR_TRUNCATE)) return rc;
    return named(file, base(file)->pMethods->xTruncate(base(file), size));
}

int syncFile(sqlite3_file* file, int flags)
{
    if (const int rc = ask(FileOperation::Flush, file, SQLITE_IOERR_FSYNC)) return rc;
    return named(file, base(file)->pMethods->xSync(base(file), flags));
}

int fileSize(sqlite3_file* file, sqlite3_int64* size)
{
    return base(file)->pMethods->xFileSize(base(file), size);
}

int lockFile(sqlite3_file* file, int level)
{
    return base(file)->pMethods->xLock(base(file), level);
}

int unlockFile(sqlite3_file* file, int level)
{
    return base(file)->pMethods->xUnlock(base(file), level);
}

int checkReservedLock(sqlite3_file* file, int* reserved)
{
    return base(file)->pMethods->xCheckReservedLock(base(file), reserved);
}

int fileControl(sqlite3_file* file, int code, void* argument)
{
    return base(file)->pMethods->xFileControl(base(file), code, argument);
}

int sectorSize(sqlite3_file* file)
{
    return base(file)->pMethods->xSectorSize(base(file));
}

int deviceCharacteristics(sqlite3_file* file)
{
    return base(file)->pMethods->xDeviceCharacteristics(base(file));
}

// Version 1 has no shared memory and no memory mapping. The write-ahead log is used only
// under an exclusive lock, which needs neither.
const sqlite3_io_methods kMethods = {1,
                                     closeFile,
                                     readFile,
                                     writeFile,
                                     truncateFile,
                                     syncFile,
                                     fileSize,
                                     lockFile,
                                     unlockFile,
                                     checkReservedLock,
                                     fileControl,
                                     sectorSize,
                                     deviceCharacteristics,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr,
                                     nullptr};

// pMethods stays null if the file couldn't be opened; SQLite then doesn't close it.
int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    ProbedFile& opened = *new (file) ProbedFile{};
    opened.base()->pMethods = nullptr;
    auto remembered = name ? std::make_unique<path>(pathOf(name)) : nullptr;
    const auto operation = flags & SQLITE_OPEN_CREATE ? FileOperation::Create : FileOperation::Open;
    if (remembered)
        if (const int rc = ask(operation, *remembered, SQLITE_IOERR)) return rc;
    const int rc = baseVfs->xOpen(baseVfs, name, opened.base(), flags, outFlags);
    if (opened.base()->pMethods == nullptr) return rc;
    opened.name = remembered.release();
    opened.asSqlite.pMethods = &kMethods;
    return rc;
}

int removeFileAt(sqlite3_vfs*, const char* name, int syncFolder)
{
    if (const int rc = ask(FileOperation::Remove, pathOf(name), SQLITE_IOERR_DELETE)) return rc;
    return baseVfs->xDelete(baseVfs, name, syncFolder);
}

// A copy of the system's layer with two functions replaced. It isn't the default layer:
// a connection has to ask for it by name.
sqlite3_vfs* registered()
{
    baseVfs = sqlite3_vfs_find(nullptr);
    static sqlite3_vfs vfs = *baseVfs;
    vfs.zName = "tolvek";
    vfs.pNext = nullptr;
    vfs.szOsFile = static_cast<int>(sizeof(ProbedFile)) + baseVfs->szOsFile;
    vfs.xOpen = openFile;
    vfs.xDelete = removeFileAt;
    sqlite3_vfs_register(&vfs, 0);
    return &vfs;
}

}

const char* probeVfs()
{
    static const sqlite3_vfs* vfs = registered();
    return vfs->zName;
}

}
