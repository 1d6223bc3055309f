#include "store/text_dump_set.h"

#include "app/file_names.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "store/text_dump_tables.h"

namespace tolvek {

namespace {

bool writesBeside = false; // an UnLoadBeside exists

std::vector<TextView> fileNames()
{
    std::vector<TextView> names;
    for (const TextDump* dump : allTextDumps())
        names.push_back(dump->file);
    return names;
}

// If the file is a link, its target is replaced, so the link stays.
Path placeOf(TextView file)
{
    return linkTarget(targetPath(joinPath(appPath(), file)));
}

Path besideOf(const Path& place)
{
    Path beside = place;
    beside += toUtf8(kNewSuffix);
    return beside;
}

Path markPath()
{
    return nativePath(joinPath(appPath(), sideFile(Text(tblTolvekDump().file), kWholeSuffix)));
}

void flushFolders()
{
    for (const TextView file : fileNames())
        flushFolder(placeOf(file).parent_path());
}

// Only the presence of the mark counts, so it is empty.
void setMark()
{
    OpenFile mark(markPath(), OpenFile::Mode::Create);
    mark.flush();
    mark.close();
    flushFolder(markPath().parent_path());
}

// May be repeated after a cut-off at any statement: the mark goes last.
void takePlaces()
{
    for (const TextView file : fileNames()) {
        const Path place = placeOf(file), beside = besideOf(place);
        if (!fileExists(beside)) continue; // replaced before the cut-off
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
    // The exchange renames, which would replace even a read-only file.
    if (isReadOnly(place)) throw RuntimeError(75);
    return pathText(besideOf(place));
}

void exchangeTextFiles()
{
    asFileError([] {
        flushFolders(); // the mark promises six complete files, so their names come first
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
