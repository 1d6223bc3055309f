#include "platform/runtime/msg_box.h"
#include "support/msg_box_script.h"
#include "test_form.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

QMessageBox* standingBox()
{
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QPushButton* buttonOf(QMessageBox& box, TextView caption)
{
    for (QAbstractButton* button : box.buttons())
        if (fromQt(button->text()) == caption) return qobject_cast<QPushButton*>(button);
    return nullptr;
}

// Acts on the box once it is shown.
void whenShown(std::function<void(QMessageBox&)> act)
{
    QTimer::singleShot(0, [act = std::move(act)] {
        QMessageBox* box = standingBox();
        ASSERT_NE(box, nullptr);
        act(*box);
    });
}

TEST(MsgBoxTest, AnOkBoxIsPlainTextUnderTheProgramsTitle)
{
    whenShown([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Tolvek"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text(), QStringLiteral("<b>a</b>\nb\nc\nd"));
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        ASSERT_EQ(box.buttons().size(), 1);
        buttonOf(box, u"OK")->click();
    });
    EXPECT_EQ(MsgBox(u"<b>a</b>\r\nb\n\rc\rd"), MsgAnswer::Ok);
}

TEST(MsgBoxTest, EscapeClosesAnOkBox)
{
    whenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(MsgBox(u"a"), MsgAnswer::Ok);
}

TEST(MsgBoxTest, AnErrorHasTheCriticalIconAndItsTitle)
{
    whenShown([](QMessageBox& box) {
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("dspSearch Name"));
        box.close();
    });
    MsgBox(u"a", MsgButtons::Ok, u"dspSearch Name", MsgIcon::Critical);
}

TEST(MsgBoxTest, YesAndNoAreAnsweredByTheirButtons)
{
    whenShown([](QMessageBox& box) { buttonOf(box, u"はい")->click(); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::YesNo), MsgAnswer::Yes);
    whenShown([](QMessageBox& box) { buttonOf(box, u"いいえ")->click(); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::YesNo), MsgAnswer::No);
}

TEST(MsgBoxTest, EscapeDoesNotAnswerAQuestionAndClosingIsNo)
{
    bool stillThere = false;
    whenShown([&](QMessageBox& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        stillThere = box.isVisible();
        box.close();
    });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::YesNo), MsgAnswer::No);
    EXPECT_TRUE(stillThere);
}

TEST(MsgBoxTest, OkAndCancelAreAnsweredByTheirButtons)
{
    whenShown([](QMessageBox& box) { buttonOf(box, u"OK")->click(); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::OkCancel), MsgAnswer::Ok);
    whenShown([](QMessageBox& box) {
        EXPECT_EQ(box.buttons().size(), 2);
        buttonOf(box, u"キャンセル")->click();
    });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::OkCancel), MsgAnswer::Cancel);
}

TEST(MsgBoxTest, EnterIsOkAndEscapeAndClosingAreCancel)
{
    whenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::OkCancel), MsgAnswer::Ok);
    whenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::OkCancel), MsgAnswer::Cancel);
    whenShown([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(MsgBox(u"?", MsgButtons::OkCancel), MsgAnswer::Cancel);
}

TEST(MsgBoxTest, EnterTakesTheDefaultAnswer)
{
    for (const MsgAnswer answer : {MsgAnswer::Yes, MsgAnswer::No}) {
        whenShown([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
        EXPECT_EQ(MsgBox(u"?", MsgButtons::YesNo, kApplicationTitle, MsgIcon::None, answer),
                  answer);
    }
}

TEST(MsgBoxTest, NothingIsHeldOpenWhileTheProgramWaits)
{
    MsgBoxScript boxes;
    std::vector<std::string> order;
    setBeforeWait([&] { order.emplace_back("before"); });
    boxes.expectAndLook(u"a", MsgAnswer::Ok, [&] { order.emplace_back("box"); });
    MsgBox(u"a");
    setBeforeWait({});
    EXPECT_EQ(order, (std::vector<std::string>{"before", "box"}));
}

TEST(MsgBoxScriptTest, GivesTheAnswersInTheirOrder)
{
    MsgBoxScript boxes;
    boxes.expect(u"one", MsgAnswer::Yes, u"Title");
    boxes.expect(u"two");
    EXPECT_EQ(MsgBox(u"one", MsgButtons::YesNo, u"Title"), MsgAnswer::Yes);
    EXPECT_EQ(boxes.pending(), 1U);
    EXPECT_EQ(MsgBox(u"two"), MsgAnswer::Ok);
    EXPECT_EQ(boxes.shown().size(), 2U);
}

void askUnforeseen()
{
    MsgBoxScript boxes;
    if (MsgBox(u"?", MsgButtons::YesNo) != MsgAnswer::No) throw std::logic_error("not answered No");
}

void expectInVain()
{
    MsgBoxScript boxes;
    boxes.expect(u"never");
}

void expectOtherTitle()
{
    MsgBoxScript boxes;
    boxes.expect(u"a", MsgAnswer::Ok, u"right");
    MsgBox(u"a", MsgButtons::Ok, u"wrong");
}

TEST(MsgBoxScriptTest, AnUnforeseenBoxFailsTheTestAndIsAnsweredNo)
{
    EXPECT_NONFATAL_FAILURE(askUnforeseen(), "unforeseen box");
}

TEST(MsgBoxScriptTest, ABoxThatNeverCameFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(expectInVain(), "box never came: never");
}

TEST(MsgBoxScriptTest, AnotherTitleFailsTheTest)
{
    EXPECT_NONFATAL_FAILURE(expectOtherTitle(), "wrong");
}

TEST(MsgBoxTest, ABoxIsAsWideAsItsTitle)
{
    const QString title = QStringLiteral("エラーメッセージ (memBackUp_FileSelect_Click)");
    whenShown([&](QMessageBox& box) {
        QFont bold = box.font();
        bold.setBold(true);
        EXPECT_GT(box.width(), QFontMetrics(bold).horizontalAdvance(title) + 100);
        box.close();
    });
    MsgBox(u"a", MsgButtons::Ok, fromQt(title));
}

}

}
