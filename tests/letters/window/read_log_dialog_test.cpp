#include "letters/window/read_log_dialog.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTreeWidget>

namespace tolvek::test {
namespace {

ReadRecord recordAt(TextView time)
{
    BoxRecord box;
    box.box = u"受信フォルダ/受信メール.ppm";
    box.held = 3;
    box.stored = 2;
    box.noDate = {1, {u"Subject: <b>x</b>"}};
    BoxRecord missing;
    missing.box = u"受信フォルダ/黒の引出し.ppm";
    missing.failure = u"状態 1（箱がありません）";
    return {Text(time), {box, missing}};
}

class ReadLogDialogTest : public ::testing::Test {
protected:
    void open() { dialog = std::make_unique<ReadLogDialog>(log); }
    QTreeWidget& reads() { return *dialog->findChild<QTreeWidget*>(); }
    std::string details()
    {
        return dialog->findChild<QPlainTextEdit*>()->toPlainText().toStdString();
    }
    static std::string cell(const QTreeWidgetItem& item, int column)
    {
        return item.text(column).toStdString();
    }

    TempFolder folder;
    std::filesystem::path log = folder / "TolvekRead.log";
    std::unique_ptr<ReadLogDialog> dialog;
};

TEST_F(ReadLogDialogTest, ShowsTheNewestReadFirstWithItsBoxes)
{
    appendToReadLog(log, recordAt(u"2000/02/15 10:11:12"));
    appendToReadLog(log, recordAt(u"2000/02/16 10:11:12"));
    open();
    ASSERT_EQ(reads().topLevelItemCount(), 2);
    const QTreeWidgetItem& newest = *reads().topLevelItem(0);
    EXPECT_EQ(cell(newest, 0), "2000/02/16 10:11:12");
    EXPECT_EQ(cell(newest, 1), "3");
    EXPECT_EQ(cell(newest, 2), "2");
    EXPECT_EQ(cell(newest, 5), "1");
    EXPECT_EQ(cell(newest, 6), "保存できないメールがあります")
        << "a missing box is nothing special";
    ASSERT_EQ(newest.childCount(), 2);
    EXPECT_EQ(cell(*newest.child(1), 6), "状態 1（箱がありません）");
}

TEST_F(ReadLogDialogTest, ShowsWhatIsKnownOfEachMail)
{
    appendToReadLog(log, recordAt(u"now"));
    open();
    reads().setCurrentItem(reads().topLevelItem(0)->child(0));
    EXPECT_NE(details().find("日付なし: 1"), std::string::npos);
    EXPECT_NE(details().find("- Subject: <b>x</b>"), std::string::npos);
}

TEST_F(ReadLogDialogTest, SaysWhenTheNumbersDoNotAddUp)
{
    ReadRecord record = recordAt(u"now");
    record.boxes[0].held = 5;
    appendToReadLog(log, record);
    open();
    EXPECT_EQ(cell(*reads().topLevelItem(0), 6), "数が合いません");
}

TEST_F(ReadLogDialogTest, SaysThatThereIsNoLog)
{
    open();
    EXPECT_EQ(reads().topLevelItemCount(), 0);
    EXPECT_NE(details().find("記録がありません"), std::string::npos);
}

}
}
