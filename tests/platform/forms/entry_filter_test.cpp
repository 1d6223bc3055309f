#include "platform/forms/entry_filter.h"
#include "platform/forms/qt_text.h"

#include <QAccessible>
#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>

namespace tolvek::test {

namespace {

class EntryFilterTest : public testing::Test {
protected:
    EntryFilterTest() : filter(*new EntryFilter(edit)) {}

    void given(TextView text, int caret)
    {
        filter.setByCode(toQt(text));
        edit.setCursorPosition(caret);
    }
    void type(const QString& text)
    {
        QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, text, Qt::NoModifier);
    }
    void paste(const QString& text)
    {
        QGuiApplication::clipboard()->setText(text);
        QTest::keySequence(&edit, QKeySequence::Paste);
    }
    void commit(const QString& text, const QString& preedit = {})
    {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(text);
        QCoreApplication::sendEvent(&edit, &event);
    }
    void drop(const QString& text)
    {
        QMimeData data;
        data.setText(text);
        QDropEvent event(edit.rect().center(), Qt::CopyAction, &data, Qt::LeftButton,
                         Qt::NoModifier);
        edit.dropEvent(&event);
    }
    Text text() const { return fromQt(edit.text()); }

    struct : QLineEdit {
        using QLineEdit::dropEvent;
    } edit;
    EntryFilter& filter;
};

TEST_F(EntryFilterTest, ATextSetByCodeStaysAsItIs)
{
    const Text odd = u"한〜か\u3099\r\n\x1A";
    given(odd, 0);
    EXPECT_EQ(text(), odd);
}

TEST_F(EntryFilterTest, ATypedCharacterBeyondTheCodePageFallsAwayAndTheCaretStays)
{
    given(u"ab", 1);
    type(QStringLiteral("x한y"));
    EXPECT_EQ(text(), u"axyb");
    EXPECT_EQ(edit.cursorPosition(), 3);
}

TEST_F(EntryFilterTest, AMarkTypedAfterAKanaJoinsIt)
{
    given(u"かb", 1);
    type(QString(QChar(0x3099)));
    EXPECT_EQ(text(), u"がb");
    EXPECT_EQ(edit.cursorPosition(), 1);
}

// A line end from the clipboard would be invisible in a rule, and the rule would
// never match.
TEST_F(EntryFilterTest, OfAPastedTextTheFirstLineIsTaken)
{
    given(u"<>", 1);
    paste(QStringLiteral("hanako@\texample.jp\x1A\r\njiro@example.jp"));
    EXPECT_EQ(text(), u"<hanako@example.jp>");
    EXPECT_EQ(edit.cursorPosition(), 18);
}

TEST_F(EntryFilterTest, APasteReplacesTheSelectionAndCanBeUndone)
{
    given(u"abc", 0);
    edit.setSelection(1, 1);
    paste(QStringLiteral("〜\r\n"));
    EXPECT_EQ(text(), u"a～c");
    edit.undo();
    EXPECT_EQ(text(), u"abc");
}

TEST_F(EntryFilterTest, APasteThatLeavesNothingIsNoChangeAndALockedBoxTakesNone)
{
    given(u"abc", 1);
    paste(QString::fromUcs4(U"\r\nx"));
    EXPECT_EQ(text(), u"abc");
    edit.setReadOnly(true);
    paste(QStringLiteral("x"));
    EXPECT_EQ(text(), u"abc");
}

TEST_F(EntryFilterTest, APasteIsMeasuredByWhatItBecomes)
{
    given(u"", 0);
    edit.setMaxLength(3);
    paste(QStringLiteral("한か\u3099한は\u309Aかきく"));
    EXPECT_EQ(text(), u"がぱか");
}

TEST_F(EntryFilterTest, AnEndlessPasteFillsTheBoxAndNoMore)
{
    given(u"", 0);
    edit.setMaxLength(1000);
    paste(QString(1'000'000, u'〜'));
    EXPECT_EQ(text(), Text(1000, u'～'));
}

TEST_F(EntryFilterTest, TheMenusPasteAndTheMousesAreHeldToo)
{
    given(u"", 0);
    QGuiApplication::clipboard()->setText(QStringLiteral("か\u3099\r\nb"));
    edit.paste();
    EXPECT_EQ(text(), u"が");
}

TEST_F(EntryFilterTest, ADropIsHeld)
{
    given(u"", 0);
    drop(QStringLiteral("〜a\r\nb"));
    EXPECT_EQ(text(), u"～a");
}

TEST_F(EntryFilterTest, WhatStandsAfterTheCaretStaysWhicheverWayALineEndComesIn)
{
    const QString lines = QStringLiteral("〜\r\nx");
    QGuiApplication::clipboard()->setText(lines);
    const std::function<void()> ways[] = {[&] { QTest::keySequence(&edit, QKeySequence::Paste); },
                                          [&] { edit.paste(); }, [&] { type(lines); },
                                          [&] { commit(lines); }, [&] { edit.insert(lines); }};
    for (const auto& comeIn : ways) {
        given(u"ab", 1);
        comeIn();
        EXPECT_EQ(text(), u"a～b");
        EXPECT_EQ(edit.cursorPosition(), 2);
    }
}

TEST_F(EntryFilterTest, AnInputMethodsTextTakesItsWindowsFormAndWhatItComposesStays)
{
    given(u"ab", 1);
    commit(QStringLiteral("〜−‖¢£¬한"), QStringLiteral("かな"));
    EXPECT_EQ(text(), u"a～－∥￠￡￢b");
    EXPECT_EQ(fromQt(edit.displayText()), u"a～－∥￠￡￢b");
    EXPECT_EQ(fromQt(edit.inputMethodQuery(Qt::ImSurroundingText).toString()), u"a～－∥￠￡￢b");
    EXPECT_EQ(edit.cursorPosition(), 7);
    commit(QStringLiteral("仮名"));
    EXPECT_EQ(text(), u"a～－∥￠￡￢仮名b");
    edit.undo();
    EXPECT_EQ(text(), u"ab") << "both are one run of typing";
}

TEST_F(EntryFilterTest, AnInputMethodsMarkJoinsTheKanaBeforeIt)
{
    given(u"xか", 2);
    commit(QStringLiteral("\u3099い"));
    EXPECT_EQ(text(), u"xがい");
    EXPECT_EQ(edit.cursorPosition(), 3);
}

TEST_F(EntryFilterTest, AnInputMethodsTextReplacesTheSelection)
{
    given(u"xかy", 0);
    edit.setSelection(1, 2);
    commit(QStringLiteral("\u3099〜"));
    EXPECT_EQ(text(), u"x～");
}

TEST_F(EntryFilterTest, WhatIsBeingComposedIsLeftAlone)
{
    given(u"ab", 1);
    commit({}, QStringLiteral("〜한"));
    EXPECT_EQ(text(), u"ab");
    EXPECT_FALSE(edit.isModified());
}

TEST_F(EntryFilterTest, AProgramThatReadsTheScreenIsHeldToo)
{
    given(u"", 0);
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(&edit);
    ASSERT_NE(reader, nullptr);
    reader->setText(QAccessible::Value, QStringLiteral("か\u3099〜\r\nb"));
    EXPECT_EQ(text(), u"が～");
    reader->editableTextInterface()->insertText(1, QStringLiteral("\t한"));
    EXPECT_EQ(text(), u"が～");
}

}

}
