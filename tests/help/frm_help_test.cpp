#include "help/frm_help.h"

#include "help/help_browser.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/paths.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTreeWidget>
#include <QWheelEvent>
#include <QWindow>

namespace tolvek::test {
namespace {

class FrmHelpTest : public ::testing::Test {
protected:
    void TearDown() override { form.Unload(); }

    bool open(const QString& address = {})
    {
        return form.Open(pathText(TOLVEK_HELP_FILE), address);
    }
    bool openMessage(TextView message)
    {
        return form.OpenMessage(pathText(TOLVEK_HELP_FILE), message);
    }
    QString shownLine() const { return form.page->textCursor().block().text(); }
    QString shown() const { return form.page->source().path().mid(1); }
    void key(int code, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(form.window(), static_cast<Qt::Key>(code), with);
    }

    frmHelp form;
};

TEST_F(FrmHelpTest, OpensAtTheContents)
{
    ASSERT_TRUE(open());
    EXPECT_TRUE(form.Visible());
    EXPECT_EQ(shown(), "index.html");
    EXPECT_TRUE(form.page->toPlainText().contains("はじめて使うとき"));
}

TEST_F(FrmHelpTest, OpensAtAPageAndAnotherOneInTheSameWindow)
{
    ASSERT_TRUE(open("filters.html#order"));
    EXPECT_EQ(shown(), "filters.html");
    const QWidget* const window = form.window();
    ASSERT_TRUE(open("backup.html"));
    EXPECT_EQ(shown(), "backup.html");
    EXPECT_EQ(form.window(), window);
}

TEST_F(FrmHelpTest, AFileThatIsNoHelpFileOpensNothing)
{
    const TempFolder folder;
    writeBytes(folder / "Tolvek.hlp", "help");
    EXPECT_FALSE(form.Open(pathText(folder / "Tolvek.hlp"), {}));
    EXPECT_FALSE(form.Loaded());
}

TEST_F(FrmHelpTest, OfAMessageItsPlaceIsShownAndMarked)
{
    ASSERT_TRUE(openMessage(u"今日はすでに１回バックアップを実行しています。\r\n"
                            u"バックアップは，１日１回しか出来ません。"));
    EXPECT_EQ(shown(), "messages.html");
    EXPECT_EQ(form.page->markCount(), 1);
    EXPECT_TRUE(shownLine().contains("今日はすでに"));
}

TEST_F(FrmHelpTest, OfAFailureItsNumberIsShown)
{
    ASSERT_TRUE(openMessage(u"エラー番号： 61\r（ディスクの空き容量が不足しています。）"));
    EXPECT_EQ(shown(), "errors.html");
    EXPECT_TRUE(shownLine().contains("ディスクの空き容量"));
    ASSERT_TRUE(openMessage(
        u"エラー番号： 3343\r（データベースの形式 '/home/hana/Tolvek.Mdb' を認識できません。）"));
    EXPECT_EQ(shown(), "errors.html");
    EXPECT_TRUE(shownLine().contains("を認識できません。"));
}

TEST_F(FrmHelpTest, OfAnUnknownMessageTheListOfMessagesIsShown)
{
    ASSERT_TRUE(openMessage(u"まだ誰も見たことのない文です。"));
    EXPECT_EQ(shown(), "messages.html");
    EXPECT_EQ(form.page->markCount(), 0);
}

TEST_F(FrmHelpTest, WideBlanksOfCaptionsStayWide)
{
    ASSERT_TRUE(open("mail.html"));
    EXPECT_TRUE(form.page->toPlainText().contains("　（次に続く）"));
}

TEST_F(FrmHelpTest, PicturesAndStylesComeFromTheFile)
{
    ASSERT_TRUE(open("mail.html"));
    const auto resource = [this](int type, const char* name) {
        return form.page->loadResource(type, QUrl(QString("help:/") + name));
    };
    EXPECT_FALSE(
        qvariant_cast<QImage>(resource(QTextDocument::ImageResource, "main.png")).isNull());
    EXPECT_FALSE(resource(QTextDocument::StyleSheetResource, "manual.css").isNull());
}

TEST_F(FrmHelpTest, APictureIsNeverWiderThanThePage)
{
    ASSERT_TRUE(open());
    form.setWidth(9000);
    QCoreApplication::processEvents();
    ASSERT_TRUE(open("mail.html"));
    const QVariant picture =
        form.page->loadResource(QTextDocument::ImageResource, QUrl("help:/main.png"));
    EXPECT_LT(qvariant_cast<QImage>(picture).width(), form.page->viewport()->width());
}

TEST_F(FrmHelpTest, NothingOutsideTheFileIsRead)
{
    ASSERT_TRUE(open());
    EXPECT_TRUE(form.page->loadResource(QTextDocument::ImageResource, QUrl("file:///etc/hostname"))
                    .isNull());
    EXPECT_FALSE(form.page->openExternalLinks());
}

TEST_F(FrmHelpTest, BackAndForwardFollowThePagesSeen)
{
    ASSERT_TRUE(open());
    EXPECT_FALSE(form.back->isEnabled());
    ASSERT_TRUE(open("read.html"));
    EXPECT_TRUE(form.back->isEnabled());
    form.back->click();
    EXPECT_EQ(shown(), "index.html");
    form.forward->click();
    EXPECT_EQ(shown(), "read.html");
    form.home->click();
    EXPECT_EQ(shown(), "index.html");
}

TEST_F(FrmHelpTest, TheContentsOpenAPageAndFollowIt)
{
    ASSERT_TRUE(open());
    QTreeWidgetItem* const last = form.contents->topLevelItem(0)->child(1);
    emit form.contents->itemActivated(last, 0);
    EXPECT_EQ(shown(), last->data(0, Qt::UserRole).toString());
    ASSERT_TRUE(open("backup.html"));
    ASSERT_NE(form.contents->currentItem(), nullptr);
    EXPECT_EQ(form.contents->currentItem()->text(0), "バックアップ");
}

TEST_F(FrmHelpTest, TheIndexIsNarrowedByTypingAndOpensAPage)
{
    ASSERT_TRUE(open());
    const int all = form.terms->count();
    EXPECT_GT(all, 60);
    form.term->setText("ふぃるたー");
    EXPECT_GT(form.terms->count(), 1);
    EXPECT_LT(form.terms->count(), all);
    emit form.terms->itemActivated(form.terms->item(0));
    EXPECT_EQ(shown(), "filters.html");
}

TEST_F(FrmHelpTest, TheSearchListsPagesAndMarksTheirWords)
{
    ASSERT_TRUE(open());
    form.wanted->setText("引用符 ｲﾝﾎﾟｰﾄ");
    ASSERT_GT(form.hits->count(), 0);
    QTest::keyClick(form.wanted, Qt::Key_Return);
    EXPECT_EQ(shown(), form.hits->item(0)->data(Qt::UserRole).toString());
    EXPECT_GT(form.page->markCount(), 1);
    EXPECT_TRUE(form.page->textCursor().position() > 0);
    form.wanted->setText("そんな言葉はない");
    EXPECT_EQ(form.hits->count(), 0);
    QTest::keyClick(form.wanted, Qt::Key_Return);
}

TEST_F(FrmHelpTest, TheMarksAreWalkedInARound)
{
    ASSERT_TRUE(open("backup.html"));
    form.page->mark({u"バックアップ"});
    form.page->moveCursor(QTextCursor::End);
    form.page->toNextMark(1);
    const int first = form.page->textCursor().position();
    form.page->toNextMark(1);
    EXPECT_GT(form.page->textCursor().position(), first);
    form.page->toNextMark(-1);
    EXPECT_EQ(form.page->textCursor().position(), first);
    form.page->toNextMark(-1);
    EXPECT_GT(form.page->textCursor().position(), first);
    form.page->toNextMark(1);
    EXPECT_EQ(form.page->textCursor().position(), first);
}

TEST_F(FrmHelpTest, EverythingIsReachedByKeyboard)
{
    ASSERT_TRUE(open());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.window(), 60000));
    ASSERT_TRUE(open("read.html"));
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(shown(), "index.html");
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(shown(), "read.html");
    key(Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(shown(), "index.html");
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(form.window()->focusWidget(), form.wanted);
    key(Qt::Key_Escape);
    EXPECT_FALSE(form.Loaded());
}

TEST_F(FrmHelpTest, TheTextGrowsAndShrinksByKeysButtonsAndWheel)
{
    ASSERT_TRUE(open());
    ASSERT_TRUE(QTest::qWaitForWindowActive(form.window(), 60000));
    const auto size = [this] { return form.page->font().pointSizeF(); };
    const double usual = size();
    key(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_GT(size(), usual);
    key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(size(), usual);
    form.smaller->click();
    EXPECT_LT(size(), usual);
    form.larger->click();
    EXPECT_EQ(size(), usual);
    QWheelEvent wheel({5, 5}, form.page->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(form.page->viewport(), &wheel);
    EXPECT_GT(size(), usual);
}

TEST_F(FrmHelpTest, EveryControlHasANameForAScreenReader)
{
    ASSERT_TRUE(open());
    for (QWidget* control : std::initializer_list<QWidget*>{
             form.page, form.lists, form.contents, form.term, form.terms, form.wanted, form.hits,
             form.back, form.forward, form.home, form.larger, form.smaller}) {
        QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(control);
        ASSERT_NE(seen, nullptr);
        EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty()) << control->metaObject()->className();
    }
}

// A dialog blocks every window that it doesn't own.
TEST_F(FrmHelpTest, StaysUsableWhileADialogWaits)
{
    ASSERT_TRUE(open());
    QWidget dialog;
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(form.window()->windowHandle()->transientParent(), dialog.windowHandle());
    dialog.hide();
    QWidget next;
    next.setWindowModality(Qt::ApplicationModal);
    next.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(form.window()->windowHandle()->transientParent(), next.windowHandle());
    form.Unload();
    ASSERT_TRUE(open("settings.html")); // opened from the dialog
    EXPECT_EQ(form.window()->windowHandle()->transientParent(), next.windowHandle());
}

}
}
