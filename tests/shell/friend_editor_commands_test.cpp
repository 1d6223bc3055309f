// The friend editor, from its menu entries to the names in the mails.
#include "shell/friend_commands.h"
#include "support/book_files.h"
#include "support/fault_injection.h"
#include "support/frm_friend_fixture.h"
#include "support/report_list.h"
#include "support/window_fixture.h"

namespace tolvek::test {
namespace {

using Command = void (*)(frmTolvek&, frmFriend&);

class FriendEditorCommandsTest : public WithFriendEditor<WindowFixture> {
protected:
    void SetUp() override
    {
        WithFriendEditor::SetUp();
        addFriend(u"hanako@example.jp", u"花子", u"モモ", u"くま", 12);
        addFriend(u"jiro@example.jp", u"次郎", u"クロ", u"ねこ", 3);
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first"));
    }
    void choose(Command command, const std::function<void()>& steps)
    {
        const ModalScript script("frmFriend", [&](QWidget&) { steps(); });
        command(form, editor);
        EXPECT_FALSE(editor.Loaded());
        EXPECT_EQ(gFriendSort, 0);
        EXPECT_TRUE(form.comMailRead->HasFocus());
        EXPECT_TRUE(form.comMailRead->Enabled());
    }
    void fillPanes()
    {
        form.txtMail->setText(u"text");
        form.lblHead->setCaption(u"head");
        form.lstSubject->setList(0, u"subject");
    }
    static void giveOldFile()
    {
        writeFriendTmp([](Int16 number) {
            writeItems(number, {TextView(u"6"), TextView(u"ロボ"), TextView(u"三郎"),
                                TextView(u"saburo@example.jp"), 1});
            writeItems(number, {TextView(u"6"), TextView(u"x"), TextView(u"x"),
                                TextView(u"jiro@example.jp"), 9});
        });
    }
    static Book oldBook()
    {
        return {u"くま/モモ/花子/hanako@example.jp/12", u"ねこ/クロ/次郎/jiro@example.jp/3"};
    }
};

struct Order {
    Command command;
    int sort;
    TextView firstAddress, routine;
};

const Order kOrders[] = {{memFriend_A_Click, 1, u"hanako@example.jp", u"memFriend_A_Click"},
                         {memFriend_F_Click, 2, u"jiro@example.jp", u"memFriend_F_Click"},
                         {memFriend_P_Click, 3, u"jiro@example.jp", u"memFriend_P_Click"}};

TEST_F(FriendEditorCommandsTest, EachCommandHasItsOrder)
{
    for (const Order& order : kOrders) {
        gEditCancel = -1; // left by another editor
        choose(order.command, [&] {
            EXPECT_EQ(gFriendSort, order.sort);
            EXPECT_EQ(gEditCancel, 0);
            EXPECT_EQ(trim(row(1)[4]), order.firstAddress);
            cancel();
        });
    }
}

TEST_F(FriendEditorCommandsTest, OkStoresTheBookAndSetsTheNamesAnew)
{
    fillPanes();
    choose(memFriend_A_Click, [&] {
        pick(1);
        editor.txtName->setText(u"花ちゃん");
        click(*editor.cmdFriendUp);
        remove(2);
        add(u"saburo@example.jp", u"三郎", u"いぬ");
        ok();
    });
    EXPECT_EQ(book(), (Book{u"くま/モモ/花ちゃん/hanako@example.jp/12",
                            u"いぬ/ポチ/三郎/saburo@example.jp/3"}));
    EXPECT_EQ(value(u"SELECT tblTolvek_SndName FROM tblTolvek"), u"花ちゃん");
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(gBusyFlag, 0);
    EXPECT_FALSE(exists("Friend.Book"));
    EXPECT_FALSE(exists("Friend.Book.Read"));
}

TEST_F(FriendEditorCommandsTest, ADeletedFriendGoesAndTheMailsKeepTheirAddresses)
{
    choose(memFriend_A_Click, [&] {
        remove(1);
        ok();
    });
    EXPECT_EQ(book(), Book{oldBook()[1]});
    EXPECT_EQ(value(u"SELECT tblTolvek_SndAdd FROM tblTolvek"), u"hanako@example.jp");
}

TEST_F(FriendEditorCommandsTest, CancelChangesNothing)
{
    fillPanes();
    giveOldFile();
    choose(memFriend_P_Click, [&] {
        remove(1);
        cancel();
    });
    EXPECT_EQ(book(), oldBook());
    EXPECT_EQ(form.txtMail->Text(), u"text");
    EXPECT_EQ(form.lstSubject->ListCount(), 1);
    EXPECT_TRUE(exists("Friend.Tmp"));
}

TEST_F(FriendEditorCommandsTest, TheCloseBoxReadsWhateverTheFileStillHolds)
{
    giveOldFile();
    choose(memFriend_F_Click, [&] {
        remove(1);
        editor.window()->close();
    });
    EXPECT_EQ(book(),
              (Book{oldBook()[0], oldBook()[1], u"ロボット/ロボ/三郎/saburo@example.jp/1"}));
}

TEST_F(FriendEditorCommandsTest, AFailureIsReportedUnderTheCommandsNameAndTheNextStatementFollows)
{
    struct BrokenEditor : frmFriend {
        void buildControls() override { throw RuntimeError(7); }
    } broken;
    ReportList reports;
    reports.listen();
    for (const Order& order : kOrders) {
        fillPanes();
        order.command(form, broken);
        EXPECT_EQ(reports.take(), Reports{toUtf8(order.routine) + " 7"});
        EXPECT_EQ(form.txtMail->Text(), u"");
        EXPECT_EQ(gFriendSort, 0);
    }
}

TEST_F(FriendEditorCommandsTest, WhileTheEditorIsOpenNoSecondOneOpens)
{
    choose(memFriend_A_Click, [&] {
        memFriend_F_Click(form, editor);
        EXPECT_EQ(gFriendSort, 1);
        EXPECT_TRUE(editor.Loaded());
        cancel();
    });
}

// From the press of OK to the end of the menu command, at every operation on the book's
// files (friend_book_file_test also covers the operations on the database).
TEST_F(FriendEditorCommandsTest, AnEndAtAnyMomentOfTheCommandLeavesTheOldBookOrTheNewOne)
{
    const Book newBook{u"くま/モモ/花子/hanako@example.jp/12", u"かめ/ポチ/新/new@example.jp/12"};
    KeptFolder kept(folder.path());
    kept.keep();
    const auto command = [&] {
        const ModalScript script("frmFriend", [&](QWidget&) {
            pick(1);
            click(*editor.cmdFriendCan);
            add(u"new@example.jp");
            remove(2);
            ok();
        });
        memFriend_A_Click(form, editor);
    };
    const auto check = [&](int operation) {
        {
            const DBEngine::Session oneCommand;
            completeFriendEdit();
            const Book found = book();
            EXPECT_TRUE(found == oldBook() || found == newBook) << "operation " << operation;
        }
        kept.putBack();
    };
    endAtEachOperation(command, check, {}, isFriendFile);
}

}
}
