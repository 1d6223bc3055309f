#include "store/database_files.h"

#include "app/file_names.h"
#include "platform/dao/alone.h"
#include "platform/dao/dao.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <functional>

namespace tolvek {

namespace {

constexpr TextView kCompanions[] = {u"-journal", u"-wal", u"-shm"};

// The engine may keep the connection of a closed database until the command ends.
// Such a connection is closed first: its file must not be renamed while it is open.
void withFileErrors(const std::function<void()>& work)
{
    DBEngine::Rest();
    asFileError(work);
}

// The file may be corrupt or of another format, so it isn't opened as a database.
Alone aloneWith(const Text& path)
{
    return Alone(path, Alone::With::File);
}

Path companion(const Path& database, TextView suffix)
{
    Path path = database;
    path += nativePath(suffix);
    return path;
}

void removeCompanions(const Path& database)
{
    for (const TextView suffix : kCompanions)
        if (fileExists(companion(database, suffix))) removeFile(companion(database, suffix));
}

void moveCompanions(const Path& from, const Path& to)
{
    for (const TextView suffix : kCompanions)
        if (fileExists(companion(from, suffix)))
            replaceFile(companion(from, suffix), companion(to, suffix));
}

// The error codes by which file systems refuse a hard link because they have none.
bool isNoLinks(const std::error_code& code)
{
    return code == std::errc::operation_not_permitted ||
           code == std::errc::operation_not_supported ||
           code == std::errc::function_not_supported || code == std::errc::too_many_links;
}

}

Text linkedDatabase(const Text& path)
{
    constexpr int kLongestChain = 40; // the system's own limit; a loop of links ends here
    Path file = existingPath(path);
    std::error_code none;
    for (int i = 0; i < kLongestChain && std::filesystem::is_symlink(file, none); ++i)
        file = file.parent_path() / std::filesystem::read_symlink(file, none);
    // Without a link the caller's spelling is kept: it is shown in messages.
    return file == existingPath(path) ? path : pathText(file.lexically_normal());
}

Text liveDatabasePath()
{
    return linkedDatabase(joinPath(appPath(), kArchiveName));
}

bool isReadOnlyDatabase(const Text& path)
{
    return isReadOnly(existingPath(path));
}

void keepMode(const Text& from, const Text& to)
{
    withFileErrors([&] { copyOwnerAndMode(existingPath(from), existingPath(to)); });
}

bool databaseExists(const Text& path)
{
    return fileExists(existingPath(path));
}

Text freeDatabaseName(const Text& wanted)
{
    Text name = wanted;
    for (int n = 2; databaseExists(name); ++n)
        name = wanted + decimal(n);
    return name;
}

void removeDatabase(const Text& path)
{
    withFileErrors([&] {
        const auto alone = aloneWith(path);
        const Path file = existingPath(path);
        removeFile(file);
        removeCompanions(file);
        alone.end();
    });
}

void renameDatabase(const Text& from, const Text& to)
{
    withFileErrors([&] {
        const auto alone = aloneWith(from);
        const Path source = existingPath(from);
        const Path target = existingPath(to);
        renameFile(source, target);
        moveCompanions(source, target);
        alone.end();
    });
}

// The old companions are removed before the exchange and the new ones moved after it:
// at no moment does a journal lie beside a file that it doesn't belong to.
void replaceDatabase(const Text& from, const Text& to)
{
    withFileErrors([&] {
        const Path source = existingPath(from);
        const Path target = existingPath(to);
        if (!fileExists(source)) throw RuntimeError(53);
        const auto alone = aloneWith(from), aloneWithOld = aloneWith(to);
        if (fileExists(target)) copyOwnerAndMode(target, source);
        removeCompanions(target);
        replaceFile(source, target);
        moveCompanions(source, target);
        alone.end();
        aloneWithOld.end();
    });
}

bool linkDatabase(const Text& existing, const Text& added)
{
    bool linked = false;
    withFileErrors([&] {
        const Path target = existingPath(added);
        removeCompanions(target); // of an earlier file of that name
        try {
            linkFile(existingPath(existing), target);
            linked = true;
        } catch (const std::system_error& failure) {
            if (!isNoLinks(failure.code())) throw;
        }
    });
    return linked;
}

void flushFolderOf(const Text& path)
{
    withFileErrors([&] { flushFolder(existingPath(path).parent_path()); });
}

}
