// The friend editor operated by its user, on top of any fixture that has an archive:
// typing a friend, picking a row, leaving; and the book as the table holds it.
#pragma once
#include "friend/friend_book_file.h"
#include "friend/frm_friend.h"
#include "platform/forms/events.h"
#include "support/archive_fixture.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/screen_driver.h"

#include <functional>
#include <vector>

namespace tolvek::test {

using Book = std::vector<Text>; // one friend each: "kind/pet/name/address/mails"

template <class Fixture> class WithFriendEditor : public Fixture {
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        gFriendRowCnt = 0;
        gFriendSort = 2;
        gEditCancel = 0;
        gFriendWidth = 9225;
        gFriendHeight = 5445;
        gFriendLeft = 300;
        gFriendTop = 450;
        for (int col = 1; col <= 5; ++col)
            gFriendColWidth[col] = 900;
        setEndFunction([] { throw ProgramEnd{0}; });
    }
    void TearDown() override
    {
        setEndFunction({});
        gFriendSort = 0;
        gEditCancel = 0;
        Fixture::TearDown();
    }

    void atEditor(const std::function<void()>& steps)
    {
        const ModalScript script("frmFriend", [&](QWidget&) { steps(); });
        editor.ShowModal();
        EXPECT_FALSE(editor.Loaded());
    }
    void enter(const Text& kind, const Text& pet, const Text& name, const Text& address)
    {
        editor.txtPetKind->setText(kind);
        editor.txtPetName->setText(pet);
        editor.txtName->setText(name);
        editor.txtAddress->setText(address);
    }
    void add(const Text& address, const Text& name = u"新", const Text& kind = u"かめ")
    {
        enter(kind, u"ポチ", name, address);
        click(*editor.cmdFriendAdd);
    }
    void pick(int row) { clickCell(*editor.grdFriend, row, 2); }
    void remove(int row)
    {
        pick(row);
        click(*editor.cmdFriendDel);
    }
    void ok() { click(*editor.cmdOK); }
    void cancel() { click(*editor.cmdCancel); }

    std::vector<Text> row(int number) const { return cells(*editor.grdFriend, number); }
    void expectArea(const std::vector<Text>& texts)
    {
        EXPECT_EQ((std::vector<Text>{editor.txtPetKind->Text(), editor.txtPetName->Text(),
                                     editor.txtName->Text(), editor.txtAddress->Text()}),
                  texts);
    }
    void expectAreaEmpty() { expectArea(std::vector<Text>(4)); }

    static Book book()
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Book friends;
        Recordset found = opened.OpenRecordset(
            Statement{u"SELECT * FROM tblFriend ORDER By tblFriend_Address ASC"});
        for (; !found.Eof(); found.MoveNext()) {
            Text line = found.field(0).text();
            for (int i = 1; i < 5; ++i)
                line += u"/" + found.field(i).text();
            friends.push_back(line);
        }
        opened.Close();
        return friends;
    }

    frmFriend editor;
};

}
