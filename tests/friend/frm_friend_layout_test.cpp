// The friend editor's texts, its layout at the minimum size and above, and its return
// from a smaller size.
#include "support/frm_friend_fixture.h"

#include <QHeaderView>

namespace tolvek::test {
namespace {

class FrmFriendLayoutTest : public WithFriendEditor<ArchiveFixture> {
protected:
    std::vector<QWidget*> parts() const
    {
        return {editor.frmFriendEd,  editor.Label1,       editor.txtPetKind,  editor.Label2,
                editor.txtPetName,   editor.Label3,       editor.txtName,     editor.Label4,
                editor.txtAddress,   editor.cmdFriendAdd, editor.cmdFriendUp, editor.cmdFriendDel,
                editor.cmdFriendCan, editor.cmdSndMail,   editor.grdFriend,   editor.cmdOK,
                editor.cmdCancel};
    }
    // The layout rule, restated in terms of the form's size.
    void expectLaidOut(float width, float height)
    {
        EXPECT_EQ(editor.Width(), width);
        EXPECT_EQ(editor.Height(), height);
        const Frame& frame = *editor.frmFriendEd;
        EXPECT_EQ(frame.Left(), 60);
        EXPECT_EQ(frame.Top(), 45);
        const Grid& grid = *editor.grdFriend;
        EXPECT_EQ(grid.Left(), 60);
        EXPECT_EQ(grid.Width(), width - 200);
        EXPECT_EQ(grid.Top(), 45 + frame.Height() + 30);
        EXPECT_EQ(grid.Height(), height - frame.Height() - 900);
        EXPECT_EQ(editor.cmdCancel->Top(), grid.Top() + grid.Height() + 75);
        EXPECT_EQ(editor.cmdCancel->Left(), width - editor.cmdCancel->Width() - 600);
        EXPECT_EQ(editor.cmdOK->Top(), editor.cmdCancel->Top());
        EXPECT_EQ(editor.cmdOK->Left(), editor.cmdCancel->Left() - editor.cmdOK->Width() - 600);
        expectApart(parts());
    }
};

TEST_F(FrmFriendLayoutTest, HasItsWords)
{
    atEditor([&] {
        EXPECT_EQ(editor.Caption(), u"おともだち帳 編集");
        const std::pair<const Label*, TextView> labels[] = {
            {editor.Label1, u"ペットの種類"},
            {editor.Label2, u"ペットの名前"},
            {editor.Label3, u"飼い主の名前"},
            {editor.Label4, u"飼い主のメールアドレス"}};
        for (const auto& [label, caption] : labels) {
            EXPECT_EQ(label->Caption(), caption);
            EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(toQt(caption)));
        }
        const std::pair<const TextBox*, TextView> tips[] = {
            {editor.txtPetKind, u"ペットの種類を入力してください"},
            {editor.txtPetName, u"ペットの名前を入力してください"},
            {editor.txtName, u"飼い主の名前を入力してください"},
            {editor.txtAddress, u"飼い主の電子メールアドレスを入力してください"}};
        for (const auto& [box, tip] : tips)
            EXPECT_EQ(box->ToolTipText(), tip);
        const std::pair<const CommandButton*, TextView> buttons[] = {
            {editor.cmdFriendAdd, u"追　加"},     {editor.cmdFriendUp, u"更　新"},
            {editor.cmdFriendDel, u"削　除"},     {editor.cmdFriendCan, u"Cancel"},
            {editor.cmdSndMail, u"メールを出す"}, {editor.cmdOK, u"O　K"},
            {editor.cmdCancel, u"CANCEL"}};
        for (const auto& [button, caption] : buttons) {
            EXPECT_EQ(button->Caption(), caption);
            EXPECT_GT(button->width(), button->fontMetrics().horizontalAdvance(toQt(caption)));
            EXPECT_GT(button->height(), button->fontMetrics().height());
        }
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, TakesPlaceSizeAndColumnsFromTheSettings)
{
    gFriendWidth = 12000;
    gFriendHeight = 7500;
    for (int col = 1; col <= 5; ++col)
        gFriendColWidth[col] = 900 + col * 100;
    atEditor([&] {
        EXPECT_EQ(editor.Left(), 300);
        EXPECT_EQ(editor.Top(), 450);
        expectLaidOut(12000, 7500);
        for (int col = 1; col <= 5; ++col)
            EXPECT_EQ(editor.grdFriend->ColWidth(col), 900 + col * 100);
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, StandsApartAndWholeAtTheLeastSize)
{
    atEditor([&] {
        expectLaidOut(9225, 5445);
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, ASmallerSizeSnapsBackWhoeverMakesIt)
{
    gFriendWidth = 0; // as after an unreadable settings file
    gFriendHeight = 0;
    atEditor([&] {
        expectLaidOut(9225, 5445);
        editor.window()->resize(200, 100);
        expectLaidOut(9225, 5445);
        editor.setWidth(9000);
        expectLaidOut(9225, 5445);
        editor.setHeight(5000);
        expectLaidOut(9225, 5445);
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, GrowsWithItsWindow)
{
    atEditor([&] {
        const QSize least = editor.window()->size();
        editor.window()->resize(least + QSize(100, 40));
        expectLaidOut(9225 + 1500, 5445 + 600);
        editor.window()->resize(least);
        expectLaidOut(9225, 5445);
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, TabGoesFromTheFieldsOverTheButtonsToTheGrid)
{
    atEditor([&] {
        expectTabWay(editor.window(),
                     {editor.txtPetKind, editor.txtPetName, editor.txtName, editor.txtAddress,
                      editor.cmdFriendAdd, editor.cmdFriendUp, editor.cmdFriendDel,
                      editor.cmdFriendCan, editor.cmdSndMail, editor.grdFriend, editor.cmdOK,
                      editor.cmdCancel, editor.txtPetKind});
        cancel();
    });
}

TEST_F(FrmFriendLayoutTest, ItsColumnsAreDraggedAndItsRowsAreNot)
{
    atEditor([&] {
        QHeaderView& columns = *editor.grdFriend->horizontalHeader();
        const QPoint border(columns.sectionSize(0) - 1, columns.height() / 2);
        QTest::mousePress(columns.viewport(), Qt::LeftButton, {}, border);
        QTest::mouseMove(columns.viewport(), border + QPoint(30, 0));
        QTest::mouseRelease(columns.viewport(), Qt::LeftButton, {}, border + QPoint(30, 0));
        EXPECT_EQ(editor.grdFriend->ColWidth(1), 900 + 450);
        EXPECT_EQ(editor.grdFriend->verticalHeader()->sectionResizeMode(0), QHeaderView::Fixed);
        ok();
    });
    EXPECT_EQ(gFriendColWidth[1], 900 + 450);
}

}
}
