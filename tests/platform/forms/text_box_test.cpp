#include "platform/forms/events.h"
#include "platform/forms/text_box.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QTextBlock>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(TextBoxTest, TakesAndGivesItsText)
{
    ShownForm form;
    auto& box = form.add<TextBox>(u"txt");
    int changes = 0;
    onEvent(&box, &TextBox::Change, [&] { ++changes; });
    form.Show();
    box.setText(u"初め");
    EXPECT_EQ(box.Text(), u"初め");
    QTest::keyClicks(&box, QStringLiteral("ab"));
    EXPECT_EQ(box.Text(), u"初めab");
    EXPECT_EQ(changes, 3);
}

TEST(TextBoxTest, CodeMaySetMoreThanAUserMayType)
{
    ShownForm form;
    auto& box = form.add<TextBox>(u"txt");
    const Text longText(40000, u'あ');
    box.setText(longText);
    EXPECT_EQ(box.Text(), longText);
    box.setText(u"한");
    EXPECT_EQ(box.Text(), u"한");
}

TEST(TextBoxTest, AChangeIsReportedOnceTheEntryIsHeld)
{
    ShownForm form;
    auto& box = form.add<TextBox>(u"txt");
    std::vector<Text> reported;
    onEvent(&box, &TextBox::Change, [&] { reported.push_back(box.Text()); });
    QGuiApplication::clipboard()->setText(QStringLiteral("か\u3099〜\r\nb"));
    QTest::keySequence(&box, QKeySequence::Paste);
    EXPECT_EQ(reported, std::vector<Text>{u"が～"});
    box.clear();
    reported.clear();
    box.paste(); // as the context menu does
    EXPECT_EQ(box.Text(), u"が～");
    for (const Text& text : reported)
        EXPECT_EQ(text, u"が～");
}

class TextBoxMultiLineTest : public testing::Test {
protected:
    TextBoxMultiLineTest() : box(form.add<MultiLineTextBox>(u"txtMail"))
    {
        box.Move(0, 0, 6000, 4500);
        box.setLocked(true);
        form.Show();
    }
    Text painted() const { return fromQt(box.toPlainText()); }

    ShownForm form;
    MultiLineTextBox& box;
};

TEST_F(TextBoxMultiLineTest, EveryFormOfLineEndIsPaintedAsOneBreakAndTheTextStaysExact)
{
    const Text exact = u"a\r\nb\n\rc\rd\ne";
    box.setText(exact);
    EXPECT_EQ(box.Text(), exact);
    EXPECT_EQ(painted(), u"a\nb\nc\nd\ne");
}

TEST_F(TextBoxMultiLineTest, TheClipboardTakesTheExactText)
{
    box.setText(u"first\r\nsecond\nthird");
    box.selectAll();
    box.copy();
    EXPECT_EQ(fromQt(QGuiApplication::clipboard()->text()), u"first\r\nsecond\nthird");
}

TEST_F(TextBoxMultiLineTest, APartialSelectionTakesItsPartOfTheExactText)
{
    box.setText(u"ab\r\ncd\r\nef");
    QTextCursor cursor(box.document());
    cursor.setPosition(1);
    cursor.setPosition(7, QTextCursor::KeepAnchor);
    box.setTextCursor(cursor);
    EXPECT_EQ(box.SelText(), u"b\r\ncd\r\ne");
}

struct Grown {
    std::vector<Text> pieces;
    TextView painted;
};

class TextBoxGrowingTest : public TextBoxMultiLineTest,
                           public testing::WithParamInterface<Grown> {};

TEST_P(TextBoxGrowingTest, TextPlusMoreShowsWhatTheWholeWouldShow)
{
    for (const Text& piece : GetParam().pieces)
        box.setText(box.Text() + piece);
    EXPECT_EQ(painted(), GetParam().painted);
}

INSTANTIATE_TEST_SUITE_P(
    Pieces, TextBoxGrowingTest,
    testing::Values(Grown{{u"a", u"\r\n", u"b"}, u"a\nb"}, Grown{{u"a\r", u"\nb"}, u"a\nb"},
                    Grown{{u"a\n", u"\rb"}, u"a\nb"}, Grown{{u"a\r\n", u"\r\nb"}, u"a\n\nb"},
                    Grown{{u"a\r\n\r", u"\nb"}, u"a\n\nb"}, Grown{{u"a\n", u"\nb"}, u"a\n\nb"}));

TEST_F(TextBoxMultiLineTest, GrowingSixteenTimesLeavesThePaintedBlocksAlone)
{
    box.setText(u"head\r\n");
    const QTextBlock first = box.document()->firstBlock();
    const int revision = first.revision();
    for (int i = 0; i < 16; ++i)
        box.setText(box.Text() + u"line\r\n");
    EXPECT_EQ(box.document()->blockCount(), 18);
    EXPECT_EQ(box.document()->firstBlock(), first);
    EXPECT_EQ(box.document()->firstBlock().revision(), revision);
    box.setText(u"other");
    EXPECT_EQ(painted(), u"other");
}

TEST_F(TextBoxMultiLineTest, ALockedBoxTakesTheFocusAndASelectionButNoTyping)
{
    box.setText(u"abc");
    box.SetFocus();
    EXPECT_TRUE(box.HasFocus());
    QTest::keyClicks(&box, QStringLiteral("x"));
    EXPECT_EQ(box.Text(), u"abc");
    key(box, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box.SelText(), u"abc");
    EXPECT_TRUE(box.Locked());
}

TEST_F(TextBoxMultiLineTest, ANewTextIsShownFromItsStart)
{
    Text tall;
    for (int i = 0; i < 500; ++i)
        tall += u"line\r\n";
    box.setText(tall);
    box.setText(tall + u"more");
    EXPECT_EQ(box.verticalScrollBar()->value(), 0);
    EXPECT_EQ(box.textCursor().position(), 0);
}

TEST_F(TextBoxMultiLineTest, WhatTheUserTypesHasCrLfAndOnlyTheCodePagesCharacters)
{
    box.setLocked(false);
    QTest::keyClicks(&box, QStringLiteral("a"));
    key(box, Qt::Key_Return);
    QTest::keyClicks(&box, QStringLiteral("b"));
    EXPECT_EQ(box.Text(), u"a\r\nb");
    QGuiApplication::clipboard()->setText(QStringLiteral("한c〜\x1A\nd"));
    box.paste();
    EXPECT_EQ(box.Text(), u"a\r\nbc～\r\nd");
    EXPECT_EQ(painted(), u"a\nbc～\nd");
}

TEST_F(TextBoxMultiLineTest, SettingATextTellsOfTheChange)
{
    int changes = 0;
    onEvent(&box, &MultiLineTextBox::Change, [&] { ++changes; });
    box.setText(u"a");
    box.setText(u"ab");
    box.setText(u"");
    EXPECT_EQ(changes, 3);
    EXPECT_EQ(painted(), u"");
}

}

}
