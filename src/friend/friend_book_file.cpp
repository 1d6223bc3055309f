#include "friend/friend_book_file.h"

#include "app/database.h"
#include "app/file_names.h"
#include "app/state.h"
#include "friend/ed_friend.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/text_files.h"
#include "platform/system/files.h"

#include <exception>

namespace tolvek {

namespace {

constexpr char16_t kEndOfFile = 0x1A; // inside a text it would end the reading

Path beside(TextView name)
{
    return nativePath(joinPath(appPath(), name));
}

bool isThere(TextView name)
{
    return fileExists(beside(name));
}

void keepCopy()
{
    asFileError([] {
        const Path written = existingPath(friendTmpPath());
        flushFileToDisk(written);
        copyFileContents(written, beside(kEditedBook), false);
    });
}

// The database is put at rest first: the copy may be marked only when the emptying is
// on disk.
void markEmptied()
{
    if (!isThere(kEditedBook)) return;
    DBEngine::Rest();
    asFileError([] {
        // An older copy that was never imported completely isn't overwritten but put
        // aside.
        if (isThere(kEditedBookRead)) replaceFile(beside(kEditedBookRead), beside(kEditedBookKept));
        replaceFile(beside(kEditedBook), beside(kEditedBookRead));
        flushFolder(nativePath(appPath()));
    });
}

void removeIfThere(TextView name)
{
    if (isThere(name)) removeFile(beside(name));
}

// The imported friends are on disk before the copies go. Friend.Book.Read is removed
// first: it only allows adding, while Friend.Book alone still means the whole new book.
void removeCopies()
{
    DBEngine::Rest();
    asFileError([] {
        removeIfThere(kEditedBookRead);
        removeIfThere(kEditedBook);
        flushFolder(nativePath(appPath()));
    });
}

// On failure, closing gDb rolls the transaction back.
void executeEmptying()
{
    openArchive();
    try {
        executeInTransaction(Statement{u"DELETE FROM tblFriend "});
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

// A commit that failed late may have emptied the table all the same. The copy is
// removed only when the old book is certain to be there.
void dropCopyOfUntouchedBook()
{
    try {
        if (!tableHoldsRows()) return;
        removeIfThere(kEditedBook);
        flushFolder(nativePath(appPath()));
    } catch (const std::exception&) {
        gDb.Close(); // the earlier failure is the one to report
    }
}

// Friend.Tmp may by now hold a different book than a copy left from earlier.
bool copyIsOf(const Path& file)
{
    const Path copy = beside(isThere(kEditedBook) ? kEditedBook : kEditedBookRead);
    return fileExists(copy) && fileExists(file) && readFile(copy) == readFile(file);
}

}

Text friendTmpPath()
{
    return joinPath(appPath(), kFriendTempName);
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
            std::rethrow_exception(failure); // the first failure is the one to report
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

// If marking failed before, it is repeated here: at a later start the copy may only add
// to the table, since more may have been stored by then.
void readFriendTmp()
{
    // Reports its own failures; an import that wasn't complete keeps the copy.
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
    if (isThere(kEditedBook)) {
        executeEmptying();
        markEmptied();
    }
    if (!isThere(kEditedBookRead)) return;
    if (tmpFriend(joinPath(appPath(), kEditedBookRead))) removeCopies();
}

}
