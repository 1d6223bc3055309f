#include "store/db_start.h"

#include "app/file_names.h"
#include "platform/dao/dao.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "store/database_files.h"
#include "store/kept_files.h"

#include <algorithm>

namespace tolvek {

namespace {

// A compaction reads every page of its source and checks what it wrote, so a file that
// it can copy is whole. False when the file can't be read as a database.
bool copiedWhole(const Text& source, const Text& target)
{
    try {
        DBEngine::CompactDatabase(source, target);
        return true;
    } catch (const RuntimeError& error) {
        if (error.number() != 3343 && error.number() != 3041) throw;
        return false;
    }
}

// The side file of a dated backup carries the date of the day on which it was begun.
bool isBackUpsSide(TextView name)
{
    const Text pattern = backUpName(u"00000000") + Text(DBEngine::kUnfinishedSuffix);
    return std::equal(name.begin(), name.end(), pattern.begin(), pattern.end(),
                      [](char16_t found, char16_t wanted) {
                          return wanted == u'0' ? found >= u'0' && found <= u'9' : found == wanted;
                      });
}

// Copies that were being made when the program was ended, and what a compaction or the
// copy of a kept file writes before it takes its name. Only exact patterns are taken: the
// user's own files in the folder must not be deleted.
std::vector<Text> unfinishedFiles(const Text& path)
{
    std::vector<Text> files;
    const Text loadCopy = sideFile(sideFile(path, kBeforeLoadSuffix), kNewSuffix);
    for (const Text& copy : {sideFile(path, kRepairSuffix), sideFile(path, kWholeSuffix),
                             sideFile(path, kCreateSuffix), loadCopy})
        files.push_back(copy);
    for (const Text& compacted : {sideFile(path, kNewSuffix), sideFile(path, kRepairSuffix),
                                  sideFile(path, kWholeSuffix), loadCopy})
        files.push_back(sideFile(compacted, DBEngine::kUnfinishedSuffix));
    const Text folder = pathText(existingPath(path).parent_path());
    const Text backUps = backUpName(u"*") + Text(DBEngine::kUnfinishedSuffix);
    for (const Text& name : dirAll(joinPath(folder, backUps)))
        if (isBackUpsSide(name)) files.push_back(joinPath(folder, name));
    for (const TextView kept : {kJetSuffix, kDamagedSuffix})
        for (const Text& name : dirAll(sideFile(path, kept) + u"*" + fromUtf8(kUnfinishedSuffix)))
            files.push_back(joinPath(folder, name));
    return files;
}

}

// The .New is compacted instead of renamed, because that proves that it is whole.
void restoreFromNew(const Text& path)
{
    const Text fresh = sideFile(path, kNewSuffix);
    const Text side = sideFile(path, kWholeSuffix);
    if (databaseExists(path) || !databaseExists(fresh)) return;
    if (databaseExists(side)) removeDatabase(side);
    if (!copiedWhole(fresh, side)) return;
    keepJetOriginal(fresh, path);
    renameDatabase(side, path);
    flushFolderOf(path); // the .New is the only other whole copy, so it goes last
    removeDatabase(fresh);
}

bool holdsMail(const Text& path)
{
    Database database = DBEngine::OpenDatabase(path);
    const bool holds = database.HasRows(u"tblTolvek");
    database.Close();
    return holds;
}

// Opening alone isn't enough: it doesn't read the table of mails.
bool isReadable(const Text& path)
{
    try {
        holdsMail(path);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

bool mayHoldMail(const Text& path)
{
    return !isReadable(path) || holdsMail(path);
}

void keepBackUpAside(const Text& path)
{
    const Text previous = sideFile(path, kBakSuffix);
    if (!databaseExists(previous) || !mayHoldMail(previous)) return;
    moveAside(previous, sideFile(path, kKeptSuffix));
}

void removeUnfinished(const Text& path)
{
    for (const Text& file : unfinishedFiles(path))
        if (databaseExists(file)) removeDatabase(file);
}

}
