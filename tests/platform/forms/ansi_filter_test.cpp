#include "platform/forms/ansi_filter.h"

#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace tolvek {

namespace {

TEST(AnsiFilterTest, KeepsWhatTheCodePageHasAndDropsTheRest)
{
    EXPECT_EQ(onlyAnsi(QStringLiteral("あいう")), QStringLiteral("あいう"));
    EXPECT_EQ(onlyAnsi(QString::fromUcs4(U"a\U0001F431b한c")), QStringLiteral("abc"));
}

TEST(AnsiFilterTest, ATypedCharacterBeyondTheCodePageFallsAwayAndTheCaretStays)
{
    QLineEdit edit;
    holdToAnsi(edit);
    edit.setText(QStringLiteral("한"));
    EXPECT_EQ(edit.text(), QStringLiteral("한")); // set by code: left alone
    edit.setText(QStringLiteral("ab"));
    edit.setCursorPosition(1);
    QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QStringLiteral("x한y"),
                        Qt::NoModifier);
    EXPECT_EQ(edit.text(), QStringLiteral("axyb"));
    EXPECT_EQ(edit.cursorPosition(), 3);
}

}

}
