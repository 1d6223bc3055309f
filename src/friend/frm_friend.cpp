#include "friend/frm_friend.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/settings.h"
#include "app/state.h"
#include "friend/ed_friend.h"
#include "friend/friend_book_file.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/text_files.h"
#include "reply/postpet_search.h"
#include "reply/send_mail.h"

#include <algorithm>

namespace tolvek {

Int16 gFriendRowCnt;
Int16 gFriendSort;

namespace {

constexpr int kNoRow = -999;

enum Column { kNumber, kKind, kPet, kName, kAddress, kMails };
constexpr int kFirstWidth = kKind;
constexpr int kLastWidth = kMails;

constexpr TextView kHeadings[] = {
    u"ペットの種類",           u"ペットの名前",           u"飼い主の名前",
    u"飼い主のメールアドレス", u"ペットが運んだメール数",
};

// Fills columns 1 to 5, each text with a leading blank.
void setRow(Grid& grid, Int16 row, const Text (&texts)[4], TextView mails)
{
    grid.setRow(row);
    for (int i = 0; i < 4; ++i)
        grid.setTextMatrix(row, kKind + i, u" " + texts[i]);
    grid.setTextMatrix(row, kMails, mails);
}

Statement bookInOrder()
{
    Statement sql{u"SELECT * FROM tblFriend"};
    if (gFriendSort == 1)
        sql << u" ORDER By tblFriend_Address ASC";
    else if (gFriendSort == 2)
        sql << u" ORDER By tblFriend_Name ASC";
    else if (gFriendSort == 3)
        sql << u" ORDER By tblFriend_Pet ASC";
    else
        sql << u" ORDER By tblFriend_Name ASC, "; // unreachable: every command sets 1 to 3
    return sql;
}

void showFriend(Grid& grid, Int16 row, const Recordset& book)
{
    const Text texts[] = {book.field(u"tblFriend_PetKind").text(),
                          book.field(u"tblFriend_Pet").text(), book.field(u"tblFriend_Name").text(),
                          book.field(u"tblFriend_Address").text()};
    setRow(grid, row, texts, book.field(u"tblFriend_RecvMailCnt").text());
    grid.setTextMatrix(row, kNumber, decimal(row));
}

// GET_RECCNT reports its own failures and closes gDb. The Eof() below then throws, so a
// half-read book can't pass for a complete one.
void showBook(Grid& grid)
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    Recordset book = gDb.OpenRecordset(bookInOrder(), dbOpenDynaset);
    Int16 count = 0;
    GET_RECCNT(book, count);
    if (count != 0) {
        // Row 0 holds the headings.
        grid.setRows(count + 1);
        // An empty table leaves gFriendRowCnt unchanged; kept.
        gFriendRowCnt = count;
    }
    for (Int16 row = 1; !book.Eof(); ++row) {
        showFriend(grid, row, book);
        book.MoveNext();
        DoEvents();
    }
    gDb.Close();
}

Text cell(const Grid& grid, int row, int col)
{
    return trim(grid.TextMatrix(row, col));
}

// The import replaces nothing in an address, and a single quote would make it fail. It
// becomes ’, as in the mails.
Text addressText(TextView text)
{
    Text address = friendFileText(text);
    std::replace(address.begin(), address.end(), u'\'', u'’');
    return address;
}

void writeRecord(const Grid& grid, int row, Int16 number)
{
    Text kind;
    edPetKind(-1, cell(grid, row, kKind), kind);
    writeItems(number, {TextView(kind), TextView(friendFileText(grid.TextMatrix(row, kPet))),
                        TextView(friendFileText(grid.TextMatrix(row, kName))),
                        TextView(addressText(grid.TextMatrix(row, kAddress))),
                        int(toInt16(grid.TextMatrix(row, kMails)))});
}

}

void dspFriend(frmFriend& form)
{
    if (!leaveOnError(u"dspFriend", [&] { showBook(*form.grdFriend); }))
        form.cmdOK->setEnabled(false);
}

void frmFriend::Form_Load()
{
    setWidth(static_cast<float>(gFriendWidth));
    setHeight(static_cast<float>(gFriendHeight));
    setLeft(static_cast<float>(gFriendLeft));
    setTop(static_cast<float>(gFriendTop));
    leaveRow();
    prepareGrid();
    dspFriend(*this);
}

void frmFriend::Form_Resize()
{
    FriendLayout();
}

void frmFriend::prepareGrid()
{
    grdFriend->Clear();
    for (int col = kFirstWidth; col <= kLastWidth; ++col) {
        grdFriend->setColWidth(col, static_cast<float>(gFriendColWidth[col]));
        grdFriend->setTextMatrix(0, col, kHeadings[col - kFirstWidth]);
    }
}

void frmFriend::FriendAreaClear()
{
    for (TextBox* box : {txtPetKind, txtPetName, txtName, txtAddress})
        box->setText({});
}

void frmFriend::leaveRow()
{
    FriendAreaClear();
    EditRow = kNoRow;
}

void frmFriend::grdFriend_Click()
{
    EditRow = grdFriend->Row();
    txtPetKind->setText(cell(*grdFriend, EditRow, kKind));
    txtPetName->setText(cell(*grdFriend, EditRow, kPet));
    txtName->setText(cell(*grdFriend, EditRow, kName));
    txtAddress->setText(cell(*grdFriend, EditRow, kAddress));
    const Text mails = cell(*grdFriend, EditRow, kMails);
    EditMailCnt = mails.empty() ? Int16(0) : toInt16(mails);
}

void frmFriend::keepEditArea(Int16 row)
{
    const Text texts[] = {txtPetKind->Text(), txtPetName->Text(), txtName->Text(),
                          txtAddress->Text()};
    setRow(*grdFriend, row, texts, decimal(EditMailCnt));
}

// Kept: the mail count is that of the row clicked last, as when changing a row. A
// duplicate address isn't asked about; the import takes the upper one.
void frmFriend::cmdFriendAdd_Click()
{
    if (trim(txtAddress->Text()).empty()) return;
    ++gFriendRowCnt;
    grdFriend->setRows(gFriendRowCnt + 1);
    keepEditArea(gFriendRowCnt);
    grdFriend->setTextMatrix(gFriendRowCnt, kNumber, decimal(gFriendRowCnt));
    leaveRow();
}

// Kept: an empty address makes the row a deleted one.
void frmFriend::cmdFriendUp_Click()
{
    if (EditRow < 0) return;
    keepEditArea(EditRow);
    leaveRow();
}

// Kept: acts on the grid's current row, which the keyboard may have moved away from the
// clicked row.
void frmFriend::cmdFriendDel_Click()
{
    if (EditRow < 0) return;
    for (int col = kKind; col <= kMails; ++col)
        grdFriend->setTextMatrix(grdFriend->Row(), col, {});
    leaveRow();
}

void frmFriend::cmdCancel_Click()
{
    gEditCancel = -1;
    Unload();
}

void frmFriend::keepPlacement() const
{
    gFriendHeight = friendTwips(Height());
    gFriendWidth = friendTwips(Width());
    gFriendTop = friendTwips(Top());
    gFriendLeft = friendTwips(Left());
    for (int col = kFirstWidth; col <= kLastWidth; ++col)
        gFriendColWidth[col] = friendTwips(grdFriend->ColWidth(col));
}

// A row without an address is a deleted row.
void frmFriend::writeBook() const
{
    writeFriendTmp([this](Int16 number) {
        for (int row = 1; row <= gFriendRowCnt; ++row)
            if (!cell(*grdFriend, row, kAddress).empty()) writeRecord(*grdFriend, row, number);
    });
}

// After a failure the buttons stay disabled (kept): only the close box is left, which
// counts as not cancelled.
void frmFriend::cmdOK_Click()
{
    leaveOnError(u"cmdOK_Click", [this] {
        Control* const commands[] = {cmdOK,        cmdCancel,    cmdFriendUp, cmdFriendAdd,
                                     cmdFriendDel, cmdFriendCan, grdFriend};
        for (Control* command : commands)
            command->setEnabled(false);
        keepPlacement();
        writeBook();
        emptyFriendTable();
        Unload();
    });
}

// The clipboard isn't touched, so PostPet's paste inserts whatever it holds.
void cmdSndMail_Click(Form& editor, const Text& address)
{
    const Text receiver = trim(address);
    if (receiver.empty()) return;
    findPostPet(editor);
    if (gPostPetPid != 0)
        MsgBox(kOtherScreens);
    else
        startPostPet();
    SendMail(editor, 0, receiver, 0);
}

}
