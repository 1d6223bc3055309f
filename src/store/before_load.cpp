#include "store/before_load.h"

#include "app/file_names.h"
#include "platform/dao/dao.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "store/database_files.h"
#include "store/mail_set.h"

namespace tolvek {

namespace {

Path markOf(const Text& copy, TextView mark)
{
    return targetPath(sideFile(copy, mark));
}

void setRunning(const Text& copy)
{
    asFileError([&] {
        OpenFile mark(markOf(copy, kRunningSuffix), OpenFile::Mode::Create);
        mark.flush();
        mark.close();
    });
    flushFolderOf(copy);
}

// Only the copy without a number needs the mark of errors: numbered copies are never
// replaced.
void endRunning(const Text& copy, bool withErrors)
{
    const Path running = markOf(copy, kRunningSuffix);
    asFileError([&] {
        if (withErrors && copy.ends_with(kBeforeLoadSuffix))
            replaceFile(running, markOf(copy, kErrorsSuffix));
        else
            removeFile(running);
    });
    flushFolderOf(copy);
}

// The copies whose imports weren't ended, for all databases that match `database`.
std::vector<Text> runningCopies(const Text& folder, TextView database)
{
    std::vector<Text> copies;
    const Text pattern = Text(database) + Text(kBeforeLoadSuffix) + u"*" + Text(kRunningSuffix);
    for (const Text& mark : dirAll(joinPath(folder, pattern)))
        copies.push_back(joinPath(folder, mark.substr(0, mark.size() - kRunningSuffix.size())));
    return copies;
}

Text folderOf(const Text& path)
{
    return pathText(existingPath(path).parent_path());
}

// Marks left by an earlier import of this run whose endLoad failed. That import isn't
// known to be complete, so its copy counts as one with errors.
void endEarlierLoads(const Text& path)
{
    const Text name = pathText(existingPath(path).filename());
    for (const Text& copy : runningCopies(folderOf(path), name))
        endRunning(copy, true);
}

// With hard links both names exist until the next copy replaces the first one, so
// the copy has a name at every moment. Without them it is renamed.
void keepUnderNumber(const Text& copy)
{
    const Text aside = freeDatabaseName(copy);
    if (!linkDatabase(copy, aside)) renameDatabase(copy, aside);
    flushFolderOf(copy);
}

// The name that the fresh copy gets: the plain one if the copy there may be replaced
// or has been renamed, otherwise a numbered one.
Text placeFor(const Text& fresh, const Text& copy)
{
    const Path errors = markOf(copy, kErrorsSuffix);
    if (!databaseExists(copy)) {
        if (fileExists(errors)) asFileError([&] { removeFile(errors); }); // its copy is gone
        return copy;
    }
    if (fileExists(errors)) return freeDatabaseName(copy);
    if (!MailSet(fresh).holdsAllOf(copy)) keepUnderNumber(copy);
    return copy;
}

// The half-loaded database is kept only if it holds a mail that the copy lacks: the
// text files may have had mails that the archive hadn't.
void putBack(const Text& copy, const Text& database)
{
    const MailSet mails(copy);
    if (!mails.isReadable()) return;
    if (databaseExists(database) && !mails.holdsAllOf(database)) {
        renameDatabase(database, freeDatabaseName(sideFile(database, kHalfLoadedSuffix)));
        flushFolderOf(database);
    }
    replaceDatabase(copy, database);
    flushFolderOf(database);
}

}

Text beginLoad(const Text& path)
{
    if (!databaseExists(path)) return {};
    endEarlierLoads(path);
    const Text plain = sideFile(path, kBeforeLoadSuffix);
    const Text fresh = sideFile(plain, kNewSuffix);
    if (databaseExists(fresh)) removeDatabase(fresh); // of an import that was cut off
    DBEngine::CompactDatabase(path, fresh);
    const Text copy = placeFor(fresh, plain);
    replaceDatabase(fresh, copy);
    keepMode(path, copy);
    flushFolderOf(copy);
    setRunning(copy);
    return copy;
}

// The mark is removed only when the imported rows are on the disk. The other order
// could lose both the rows and the sign that they are missing.
void endLoad(const Text& copy, bool withErrors)
{
    DBEngine::Rest();
    endRunning(copy, withErrors);
}

void undoCutOffLoads(const Text& folder)
{
    for (const Text& copy : runningCopies(folder, u"*")) {
        if (databaseExists(copy)) putBack(copy, copy.substr(0, copy.rfind(kBeforeLoadSuffix)));
        // A copy that is still there couldn't be read; it must not be replaced.
        endRunning(copy, databaseExists(copy));
    }
}

}
