// The friend book, from the main window's start and menu to its mails.
#include "app/test_hooks.h"
#include "events_window.h"
#include "friend/friend_book_file.h"
#include "platform/forms/text_box.h"

namespace tolvek::test {
namespace {

constexpr TextView kHanako = u"hanako@example.jp";

class FriendWindowTest : public EventsWindow {
protected:
    void SetUp() override
    {
        EventsWindow::SetUp();
        store(mail(kHanako, u"taro@example.jp", u"first"));
    }
    std::vector<Text> names() { return column(u"SELECT tblFriend_Name FROM tblFriend"); }
    Text sender() { return value(u"SELECT tblTolvek_SndName FROM tblTolvek"); }
    // Makes the library write this friend book.
    void givenBook(const std::string& ansi)
    {
        ConverterLibrary library = givingBack();
        library.TolvekFriend_Edit = [ansi](const Text&, const Text& temp, Int16& count, Int16&) {
            writeBytes(existingPath(temp), ansi);
            count = 1;
        };
        hooks::setConverterLibrary(library);
    }
    static void add(QWidget& editor, TextView name, TextView address)
    {
        controlOf<TextBox>(editor, "txtName").setText(name);
        controlOf<TextBox>(editor, "txtAddress").setText(address);
        press(editor, "cmdFriendAdd");
    }
};

TEST_F(FriendWindowTest, TheStartTakesPostPetsFriendsIn)
{
    givenBook("\"1\",\"momo\",\"hana\",\"hanako@example.jp\",3\r\n");
    form.Show();
    EXPECT_EQ(names(), std::vector<Text>{u"hana"});
}

TEST_F(FriendWindowTest, AnEditThatWasCutOffIsCompletedBeforeTheLibraryWritesOverItsFile)
{
    writeFriendTmp([](Int16 number) {
        writeItems(number, {u"0", u"", u"typed", u"typed@example.jp", 0});
    });
    emptyFriendTable();
    givenBook("\"1\",\"momo\",\"hana\",\"hanako@example.jp\",3\r\n");
    form.Show();
    EXPECT_EQ(names(), (std::vector<Text>{u"hana", u"typed"}));
    EXPECT_FALSE(exists("Friend.Book.Read"));
}

TEST_F(FriendWindowTest, AFriendAddedInTheEditorGivesTheMailsTheName)
{
    form.Show();
    const MenuEntry* const entries[] = {form.memFriend_F, form.memFriend_P, form.memFriend_A};
    const Text typed[] = {u"花子", u"はなこ", u"ハナコ"};
    for (int i = 0; i < 3; ++i) {
        execute(Statement{u"DELETE FROM tblFriend"});
        const ModalScript editor("frmFriend", [&](QWidget& shown) {
            gFriendRowCnt = 0; // an empty table leaves the previous editor's count
            add(shown, typed[i], kHanako);
            press(shown, "cmdOK");
        });
        choose(const_cast<MenuEntry&>(*entries[i]));
        EXPECT_EQ(names(), std::vector<Text>{typed[i]});
        EXPECT_EQ(sender(), typed[i]);
    }
}

TEST_F(FriendWindowTest, TheNamesAreSetAnewFromTheMenu)
{
    form.Show();
    addFriend(Text(kHanako), u"改名", u"モモ");
    choose(*form.memFriendEd);
    EXPECT_EQ(sender(), u"改名");
    EXPECT_TRUE(form.comMailRead->Enabled());
}

TEST_F(FriendWindowTest, TheVersionDialogAndTheSettingsOpenFromTheMenu)
{
    form.Show();
    {
        const ModalScript about("frmAbout", [](QWidget& shown) { press(shown, "cmdOK"); });
        choose(*form.memVar);
    }
    const ModalScript settings("frmOption", [](QWidget& shown) { press(shown, "cmbCancel"); });
    choose(*form.memEnv);
}

}
}
