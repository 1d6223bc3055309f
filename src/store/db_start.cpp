#include "store/db_start.h"

#include "platform/dao/dao.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
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
    constexpr TextView kPattern = u"Tolvek_00000000.Mdb.Compact";
    return std::equal(name.begin(), name.end(), kPattern.begin(), kPattern.end(),
                      [](char16_t found, char16_t wanted) {
                          return wanted == u'0' ? found >= u'0' && found <= u'9' : found == wanted;
                      });
}

// .Repair is from a repair, .Whole from restoreFromNew, .Create from Table_Create and
// .BeforeLoad.New from a text import. A compaction writes its target + ".Compact", and a
// copy of a kept file its name + ".side". Only exact patterns are taken: the user's own
// files in the folder must not be deleted.
std::vector<Text> unfinishedFiles(const Text& path)
{
    std::vector<Text> files;
    for (const TextView suffix :
         {u".New.Compact", u".Repair.Compact", u".Repair", u".Whole.Compact", u".Whole", u".Create",
          u".BeforeLoad.New.Compact", u".BeforeLoad.New"})
        files.push_back(path + Text(suffix));
    const Text folder = pathText(existingPath(path).parent_path());
    for (const Text& name : dirAll(joinPath(folder, u"Tolvek_*.Mdb.Compact")))
        if (isBackUpsSide(name)) files.push_back(joinPath(folder, name));
    for (const TextView kept : {u".Jet*.side", u".Damaged*.side"})
        for (const Text& name : dirAll(path + Text(kept)))
            files.push_back(joinPath(folder, name));
    return files;
}

}

// The .New is compacted instead of renamed, because that proves that it is whole.
void restoreFromNew(const Text& path)
{
    const Text fresh = path + u".New";
    const Text side = path + u".Whole";
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
    const Text previous = path + u".Bak";
    if (!databaseExists(previous) || !mayHoldMail(previous)) return;
    moveAside(previous, path + u".Kept");
}

void removeUnfinished(const Text& path)
{
    for (const Text& file : unfinishedFiles(path))
        if (databaseExists(file)) removeDatabase(file);
}

}
