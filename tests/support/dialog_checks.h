// Checks that apply to every dialog: no control covers another, and Tab follows the
// given order; also what a row of its grid shows.
//
// Needs Qt6::Test, as support/screen_driver.h does.
#pragma once
#include "platform/forms/grid.h"

#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace tolvek::test {

inline std::vector<Text> cells(const Grid& grid, int row)
{
    std::vector<Text> texts;
    for (int col = 0; col < grid.Cols(); ++col)
        texts.push_back(grid.TextMatrix(row, col));
    return texts;
}

inline void expectApart(const std::vector<QWidget*>& parts)
{
    for (const QWidget* part : parts) {
        EXPECT_TRUE(part->parentWidget()->rect().contains(part->geometry()))
            << part->objectName().toStdString();
        for (const QWidget* other : parts) {
            if (other == part || other->parentWidget() != part->parentWidget()) continue;
            EXPECT_FALSE(part->geometry().intersects(other->geometry()))
                << part->objectName().toStdString();
        }
    }
}

inline void expectTabWay(QWidget* window, const std::vector<QWidget*>& way)
{
    way.front()->setFocus();
    for (QWidget* next : way) {
        EXPECT_EQ(window->focusWidget()->objectName().toStdString(),
                  next->objectName().toStdString());
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    }
}

}
