#include "store/text_dump_set.h"

#include "platform/runtime/file_failure.h"
#include "platform/runtime/paths.h"
#include "platform/system/file_identity.h"
#include "platform/system/files.h"
#include "store/text_dump_tables.h"

#include <array>

namespace tolvek {

namespace {

bool writesBeside = false;

std::array<TextView, 6> fileNames()
{
    return {tblTolvekDump().file, tblSearch_AddressesDump().file, tblSearch_NameDump().file,
            tblFriendDump().file, tblFilterDump().file,           tblFilterDataDump().file};
}

// A link stays a link.
Path placeOf(TextView file)
{
    return linkTarget(targetPath(joinPath(appPath(), file)));
}

Path besideOf(const Path& place)
{
    Path beside = place;
    beside += ".New";
    return beside;
}

Path markPath()
{
    return nativePath(joinPath(appPath(), Text(tblTolvekDump().file) + u".Whole"));
}

void flushFolders()
{
    for (const TextView file : fileNames())
        flushFolder(placeOf(file).parent_path());
}

void setMark()
{
    OpenFile mark(markPath(), OpenFile::Mode::Create);
    mark.flush();
    mark.close();
    flushFolder(markPath().parent_path());
}

void takePlaces()
{
    for (const TextView file : fileNames()) {
        const Path place = placeOf(file), beside = besideOf(place);
        if (!fileExists(beside)) continue; // has taken its place already
        if (fileExists(place)) copyMode(place, beside);
        replaceFile(beside, place);
    }
    flushFolders();
    removeFile(markPath());
    flushFolder(markPath().parent_path());
}

void removeBesides()
{
    for (const TextView file : fileNames())
        if (const Path beside = besideOf(placeOf(file)); fileExists(beside)) removeFile(beside);
}

}

UnLoadBeside::UnLoadBeside()
{
    writesBeside = true;
}

UnLoadBeside::~UnLoadBeside()
{
    writesBeside = false;
}

Text unLoadPath(TextView file)
{
    if (!writesBeside) return joinPath(appPath(), file);
    const Path place = placeOf(file);
    if (isReadOnly(place)) throw RuntimeError(75);
    return pathText(besideOf(place));
}

void exchangeTextFiles()
{
    asFileError([] {
        flushFolders(); // the new names, before the mark that speaks of them
        setMark();
        takePlaces();
    });
}

void dropNewTextFiles()
{
    asFileError(removeBesides);
}

void settleTextFiles()
{
    asFileError([] {
        if (fileExists(markPath()))
            takePlaces();
        else
            removeBesides();
    });
}

}
