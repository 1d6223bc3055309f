#include "store/kept_files.h"

#include "app/file_names.h"
#include "platform/dao/jet_import.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "store/database_files.h"

namespace tolvek {

namespace {

bool sameBytes(const Path& one, const Path& other)
{
    constexpr std::size_t kPiece = 1 << 16;
    OpenFile left(one, OpenFile::Mode::Read), right(other, OpenFile::Mode::Read);
    std::string a(kPiece, '\0'), b(kPiece, '\0');
    for (;;) {
        const std::size_t read = left.read(a.data(), kPiece);
        if (read != right.read(b.data(), kPiece)) return false;
        if (a.compare(0, read, b, 0, read) != 0) return false;
        if (read == 0) return true;
    }
}

// A kept file may be a hard link to the original or a copy of it.
bool isKept(const Path& original, const Path& kept)
{
    return std::filesystem::equivalent(original, kept) ||
           (std::filesystem::file_size(original) == std::filesystem::file_size(kept) &&
            sameBytes(original, kept));
}

// Committed rows of a corrupt database may be in its journal alone. The -shm file is an
// index that the engine rebuilds.
void keepCompanions(const Text& original, const Text& kept)
{
    for (const TextView suffix : {u"-wal", u"-journal"})
        if (databaseExists(original + Text(suffix)))
            copyFileContents(existingPath(original + Text(suffix)), targetPath(kept + Text(suffix)),
                             false);
}

void keep(const Text& original, const Text& wanted)
{
    Text name = wanted;
    for (int n = 2; databaseExists(name); ++n) {
        if (isKept(existingPath(original), existingPath(name)))
            return keepCompanions(original, name); // a cut-off run may not have got so far
        name = wanted + decimal(n);
    }
    // A hard link is enough: afterwards the file is replaced or removed, never written to.
    if (!linkDatabase(original, name))
        copyFileContents(existingPath(original), targetPath(name), true);
    keepCompanions(original, name);
    flushFolderOf(name);
}

template <class Work> void withNumbers(const Work& work)
{
    try {
        work();
    } catch (const std::system_error& failure) {
        throw fileError(failure.code());
    }
}

}

void keepJetOriginal(const Text& original, const Text& database)
{
    withNumbers([&] {
        if (isJetFile(existingPath(original))) keep(original, sideFile(database, kJetSuffix));
    });
}

void keepDamaged(const Text& damaged, const Text& database)
{
    withNumbers([&] {
        const bool isJet = isJetFile(existingPath(damaged));
        keep(damaged, sideFile(database, isJet ? kJetSuffix : kDamagedSuffix));
    });
}

void moveAside(const Text& file, const Text& wanted)
{
    const Text name = freeDatabaseName(wanted);
    renameDatabase(file, name);
    flushFolderOf(name);
}

}
