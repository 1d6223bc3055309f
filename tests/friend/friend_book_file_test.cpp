// Between OK and the end of the import, wherever it is cut off or fails, the friend
// book must be either the old one or the whole new one.
#include "friend/friend_book_file.h"
#include "platform/system/test_hooks.h"

#include "friend/ed_friend.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/text_files.h"
#include "store/database_files.h"
#include "support/archive_fixture.h"
#include "support/book_files.h"
#include "support/fault_injection.h"
#include "support/report_list.h"

namespace tolvek::test {
namespace {

using Names = std::vector<Text>;

class FriendBookFileTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gBackUpDisp = 0;
        for (const Text& name : oldBook())
            addFriend(name + u"@example.jp", name, u"");
    }
    void TearDown() override
    {
        gBackUpDisp = 0;
        ArchiveFixture::TearDown();
    }
    static const Names& oldBook()
    {
        static const Names book{u"a", u"old"};
        return book;
    }
    // One deleted, one renamed, one new.
    static const Names& newBook()
    {
        static const Names book{u"alpha", u"new"};
        return book;
    }
    static void write(Int16 number, const Text& name, const Text& address)
    {
        writeItems(number, {TextView(u"1"), TextView(u""), TextView(name),
                            TextView(address + u"@example.jp"), 7});
    }
    static void writeNewBook()
    {
        writeFriendTmp([](Int16 number) {
            write(number, u"alpha", u"a");
            write(number, u"new", u"new");
        });
    }
    static void edit()
    {
        writeNewBook();
        emptyFriendTable();
    }
    static Names names()
    {
        return column(u"SELECT tblFriend_Name FROM tblFriend ORDER By tblFriend_Address ASC");
    }
    void sweep() const
    {
        if (!dir(joinPath(appPath(), u"*.tmp")).empty()) kill(joinPath(appPath(), u"*.tmp"));
    }
    // The library overwrites the file with PostPet's own book.
    static void writeOver()
    {
        writeFriendTmp([](Int16 number) { write(number, u"postpet", u"postpet"); });
    }
    void expectNoCopy() const
    {
        EXPECT_FALSE(exists("Friend.Book"));
        EXPECT_FALSE(exists("Friend.Book.Read"));
    }

    KeptFolder kept{folder.path()};
};

// ---- the file ----

TEST_F(FriendBookFileTest, TextsAreTrimmedAndHoldNothingThatEndsAFieldOrTheFile)
{
    EXPECT_EQ(friendFileText(u" 　花　子 "), u"花　子");
    EXPECT_EQ(friendFileText(u"\"a\""), u"’a’");
    EXPECT_EQ(friendFileText(u"a\x1a\x1a"
                             u"b"),
              u"ab");
    EXPECT_EQ(friendFileText(u"a'b|c,d"), u"a'b|c,d");
}

TEST_F(FriendBookFileTest, TheFileIsClosedAndHoldsWhatWasWrittenWhenTheWritingFails)
{
    EXPECT_THROW(writeFriendTmp([](Int16 number) {
                     write(number, u"a", u"a");
                     throw RuntimeError(6);
                 }),
                 RuntimeError);
    EXPECT_EQ(freeFile(), 1);
    EXPECT_EQ(readBytes(file("Friend.Tmp")), "\"1\",\"\",\"a\",\"a@example.jp\",7\r\n");
}

TEST_F(FriendBookFileTest, TheFirstOfTwoFailuresIsTold)
{
    hooks::setFileProbe([](FileOperation operation, const Path&) {
        if (operation == FileOperation::Write)
            throw std::system_error(std::make_error_code(std::errc::no_space_on_device));
    });
    try {
        writeFriendTmp([](Int16 number) {
            write(number, u"a", u"a");
            throw RuntimeError(6);
        });
        ADD_FAILURE();
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.number(), 6);
    }
}

// ---- from OK to the import ----

TEST_F(FriendBookFileTest, ACopyStandsUntilTheFileIsReadIn)
{
    edit();
    EXPECT_TRUE(names().empty());
    EXPECT_FALSE(exists("Friend.Book"));
    EXPECT_EQ(readBytes(file("Friend.Book.Read")), readBytes(file("Friend.Tmp")));
    readFriendTmp();
    EXPECT_EQ(names(), newBook());
    expectNoCopy();
    EXPECT_FALSE(exists("Friend.Book.Kept"));
}

TEST_F(FriendBookFileTest, AnEmptyBookIsAWholeOne)
{
    writeFriendTmp([](Int16) {});
    emptyFriendTable();
    EXPECT_TRUE(exists("Friend.Book.Read"));
    completeFriendEdit();
    EXPECT_TRUE(names().empty());
    expectNoCopy();
}

TEST_F(FriendBookFileTest, TheCopyOutlivesTheSweepAndTheLibrary)
{
    edit();
    sweep();
    EXPECT_FALSE(exists("Friend.Tmp"));
    writeOver();
    completeFriendEdit();
    EXPECT_EQ(names(), newBook());
    expectNoCopy();
}

TEST_F(FriendBookFileTest, WithoutACopyAStartTouchesNothing)
{
    writeNewBook();
    completeFriendEdit();
    EXPECT_EQ(names(), oldBook());
}

TEST_F(FriendBookFileTest, AFileOfAnotherBookDoesntTakeTheCopyAway)
{
    edit();
    writeOver();
    readFriendTmp();
    EXPECT_EQ(names(), Names{u"postpet"});
    EXPECT_TRUE(exists("Friend.Book.Read"));
    completeFriendEdit();
    EXPECT_EQ(names(), (Names{u"alpha", u"new", u"postpet"}));
    expectNoCopy();
}

class FriendBookFileBadRecordTest : public FriendBookFileTest {
protected:
    static void editBadly()
    {
        writeFriendTmp([](Int16 number) {
            write(number, u"a", u"a");
            write(number, u"bad", u"o'brien");
            write(number, u"behind", u"z");
        });
        emptyFriendTable();
    }
    ReportList reports;
};

// Nothing is removed that a later repair could need, and what is stored after the
// failure stays.
TEST_F(FriendBookFileBadRecordTest, ARecordThatCantBeReadKeepsTheCopyAndWhatComesAfterStays)
{
    reports.listen();
    editBadly();
    readFriendTmp();
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3075"});
    EXPECT_TRUE(exists("Friend.Book.Read"));
    addFriend(u"later@example.jp", u"later", u"");
    completeFriendEdit();
    EXPECT_EQ(reports.take(), Reports{"tmpFriend 3075"});
    EXPECT_EQ(names(), (Names{u"a", u"later"}));
}

TEST_F(FriendBookFileBadRecordTest, ALaterEditPutsTheUnreadCopyAside)
{
    reports.listen();
    editBadly();
    readFriendTmp();
    const std::string unread = readBytes(file("Friend.Book.Read"));
    edit();
    readFriendTmp();
    EXPECT_EQ(names(), newBook());
    EXPECT_EQ(readBytes(file("Friend.Book.Kept")), unread);
    expectNoCopy();
    completeFriendEdit();
    EXPECT_EQ(names(), newBook());
}

TEST_F(FriendBookFileTest, ABackupOnDisplayHasNoCopy)
{
    std::filesystem::copy_file(file("Tolvek.Mdb"), file("BackUp.mdb"));
    gDbPath = joinPath(appPath(), u"BackUp.mdb");
    gBackUpDisp = 1;
    edit();
    EXPECT_TRUE(names().empty());
    expectNoCopy();
    readFriendTmp();
    EXPECT_EQ(names(), newBook());
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    EXPECT_EQ(names(), oldBook());
}

TEST_F(FriendBookFileTest, AFailureOfTheCompletionGoesToTheCallerAndLeavesTheCopy)
{
    edit();
    std::filesystem::rename(file("Friend.Book.Read"), file("Friend.Book"));
    renameDatabase(gDbPath, gDbPath + u".away");
    EXPECT_THROW(completeFriendEdit(), RuntimeError);
    renameDatabase(gDbPath + u".away", gDbPath);
    EXPECT_TRUE(exists("Friend.Book"));
    completeFriendEdit();
    EXPECT_EQ(names(), newBook());
}

// ---- the end at any moment ----

class FriendBookFileFaultsTest : public FriendBookFileTest {
protected:
    static void wholeRoad()
    {
        const DBEngine::Session oneCommand;
        edit();
        readFriendTmp();
    }
    static void start()
    {
        const DBEngine::Session oneCommand;
        completeFriendEdit();
    }
    void checkStart(int operation)
    {
        {
            const DBEngine::Session oneCommand;
            start();
            const Names found = names();
            EXPECT_TRUE(found == oldBook() || found == newBook())
                << "operation " << operation << ", " << found.size() << " friends";
            expectNoCopy();
            start();
            EXPECT_EQ(names(), found) << "operation " << operation;
        }
        kept.putBack();
    }
    void checkNewBook(int operation)
    {
        {
            const DBEngine::Session oneCommand;
            start();
            EXPECT_EQ(names(), newBook()) << "operation " << operation;
            expectNoCopy();
        }
        kept.putBack();
    }
};

TEST_F(FriendBookFileFaultsTest, AnEndAtAnyMomentLeavesTheOldBookOrTheNewOne)
{
    kept.keep();
    endAtEachOperation(wholeRoad, [this](int operation) { checkStart(operation); });
}

// The exit's sweep and the library only touch the book's files.
TEST_F(FriendBookFileFaultsTest, AlsoAfterAnOrderlyExitThatSweepsAndALibraryThatWritesOver)
{
    kept.keep();
    const auto check = [this](int operation) {
        sweep();
        writeOver();
        checkStart(operation);
    };
    endAtEachOperation(wholeRoad, check, {}, isFriendFile);
}

TEST_F(FriendBookFileFaultsTest, AnEndOfTheCompletionItselfLeavesTheNewBook)
{
    edit();
    for (const bool emptied : {true, false}) {
        if (!emptied) {
            kept.putBack();
            std::filesystem::rename(file("Friend.Book.Read"), file("Friend.Book"));
            addFriend(u"a@example.jp", u"stands still", u"");
            std::filesystem::remove_all(folder / "kept");
        }
        kept.keep();
        endAtEachOperation(start, [this](int operation) { checkNewBook(operation); });
    }
}

// The failure was reported, and the user ended the program without importing the file.
TEST_F(FriendBookFileFaultsTest, AFailureOfAnyOperationLeavesTheOldBookOrTheNewOne)
{
    kept.keep();
    const auto editOrFail = [] {
        const DBEngine::Session oneCommand;
        try {
            edit();
        } catch (const std::exception&) {
            gDb.Close();
        }
    };
    failEachOperation(editOrFail, [this](int operation) { checkStart(operation); });
}

TEST_F(FriendBookFileFaultsTest, AFailureOfTheReadingBackIsMadeUpForAtTheNextStart)
{
    edit();
    kept.keep();
    ReportList reports;
    reports.listen();
    const auto readOrFail = [] {
        const DBEngine::Session oneCommand;
        try {
            readFriendTmp();
        } catch (const std::exception&) {
            gDb.Close();
        }
    };
    failEachOperation(readOrFail, [this](int operation) {
        gDb.Close();
        checkNewBook(operation);
    });
}

}
}
