#include "friend/friend_book_file.h"

#include "app/database.h"
#include "app/state.h"
#include "friend/ed_friend.h"
#include "platform/runtime/file_failure.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"
#include "platform/system/files.h"

#include <exception>

namespace tolvek {

namespace {

// None of them ends in .tmp or .Mdb: the exit sweeps the one, the list of
// backups shows the other.
constexpr TextView kNotYetEmptied = u"Friend.Book";
constexpr TextView kEmptied = u"Friend.Book.Read";
constexpr TextView kKept = u"Friend.Book.Kept";

constexpr char16_t kEndOfFile = 0x1A; // in the middle of a text it would end the reading

Path beside(TextView name)
{
    return nativePath(joinPath(appPath(), name));
}

bool stands(TextView name)
{
    return fileExists(beside(name));
}

void keepCopy()
{
    asFileError([] {
        const Path written = existingPath(friendTmpPath());
        flushFileToDisk(written);
        copyFileContents(written, beside(kNotYetEmptied), false);
    });
}

// The database is put at rest first: the copy may say so only of an emptying
// that is on the disk.
void markEmptied()
{
    if (!stands(kNotYetEmptied)) return;
    DBEngine::Rest();
    asFileError([] {
        if (stands(kEmptied)) replaceFile(beside(kEmptied), beside(kKept));
        replaceFile(beside(kNotYetEmptied), beside(kEmptied));
        flushFolder(nativePath(appPath()));
    });
}

void removeIfThere(TextView name)
{
    if (stands(name)) removeFile(beside(name));
}

// What was read in is on the disk before its copy goes. The one that may only
// add goes first: alone, the other one still means the whole new book.
void removeCopies()
{
    DBEngine::Rest();
    asFileError([] {
        removeIfThere(kEmptied);
        removeIfThere(kNotYetEmptied);
        flushFolder(nativePath(appPath()));
    });
}

// A failure rolls back what there is of it.
void executeEmptying()
{
    gWs = DBEngine::Workspaces(0);
    gDb = DBEngine::OpenDatabase(gDbPath);
    try {
        inTransaction([] { gDb.Execute(Statement{u"DELETE FROM tblFriend "}, dbFailOnError); });
    } catch (const std::exception&) {
        gDb.Close();
        throw;
    }
    gDb.Close();
}

bool tableHoldsRows()
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    const bool holds = gDb.OpenRecordset(Statement{u"SELECT * FROM tblFriend"}).RecordCount() != 0;
    gDb.Close();
    return holds;
}

// A commit that failed late may have emptied the table all the same. As long as
// it isn't sure that the old book stands, the copy does.
void dropCopyOfUntouchedBook()
{
    try {
        if (!tableHoldsRows()) return;
        removeIfThere(kNotYetEmptied);
        flushFolder(nativePath(appPath()));
    } catch (const std::exception&) {
        gDb.Close(); // the failure that led here is the one to tell
    }
}

// Friend.Tmp may hold another book by now than a copy that was left behind.
bool copyIsOf(const Path& file)
{
    const Path copy = beside(stands(kNotYetEmptied) ? kNotYetEmptied : kEmptied);
    return fileExists(copy) && fileExists(file) && readFile(copy) == readFile(file);
}

}

Text friendTmpPath()
{
    return joinPath(appPath(), u"Friend.Tmp");
}

void writeFriendTmp(const std::function<void(Int16)>& writeRecords)
{
    const Int16 number = freeFile();
    openForOutput(friendTmpPath(), number);
    try {
        writeRecords(number);
    } catch (const std::exception&) {
        const std::exception_ptr failure = std::current_exception();
        try {
            closeFile(number);
        } catch (const RuntimeError&) {
            std::rethrow_exception(failure); // the first one is the one to tell
        }
        throw;
    }
    closeFile(number);
}

Text friendFileText(TextView text)
{
    Text written = trim(text);
    std::erase(written, kEndOfFile);
    for (char16_t& unit : written)
        if (unit == u'"') unit = u'’';
    return written;
}

void emptyFriendTable()
{
    if (gBackUpDisp == 1) {
        executeEmptying();
        return;
    }
    keepCopy();
    try {
        executeEmptying();
    } catch (const std::exception&) {
        const std::exception_ptr failure = std::current_exception();
        dropCopyOfUntouchedBook();
        std::rethrow_exception(failure);
    }
    markEmptied();
}

// A copy whose mark failed gets it here: at a later start it may only add to
// the table, in which more has been stored by then.
void readFriendTmp()
{
    const bool whole = tmpFriend(friendTmpPath());
    if (gBackUpDisp == 1) return;
    asFileError([&] {
        if (whole && copyIsOf(existingPath(friendTmpPath())))
            removeCopies();
        else
            markEmptied();
    });
}

void completeFriendEdit()
{
    if (stands(kNotYetEmptied)) {
        executeEmptying();
        markEmptied();
    }
    if (!stands(kEmptied)) return;
    if (tmpFriend(joinPath(appPath(), kEmptied))) removeCopies();
}

}
