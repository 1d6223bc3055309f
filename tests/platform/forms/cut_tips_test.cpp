#include "platform/forms/cut_tips.h"

#include "platform/forms/grid.h"
#include "platform/forms/list_box.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QToolTip>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

constexpr TextView kLong = u"とても長い件名なので一覧の幅には入りきりません";

QString tipAt(QWidget& viewport, const QPoint& pos)
{
    // A tip stays for a moment after it is hidden, so another one is shown before.
    QToolTip::showText(QPoint(), QStringLiteral("none"), &viewport);
    QHelpEvent asked(QEvent::ToolTip, pos, viewport.mapToGlobal(pos));
    QApplication::sendEvent(&viewport, &asked);
    return QToolTip::text();
}

TEST(CutTipsTest, AnEntryThatIsCutShowsItsTextAndAWholeOneNothing)
{
    ShownForm form;
    auto& list = form.add<ListBox>(u"lst");
    list.Move(0, 0, 2400, 3000);
    list.AddItem(kLong);
    list.AddItem(u"短い");
    list.AddItem(u"<b>太字に見えてはいけない長い件名</b>");
    form.Show();
    EXPECT_EQ(fromQt(tipAt(*list.viewport(), entryPos(list, 0))), kLong);
    EXPECT_FALSE(tipAt(*list.viewport(), entryPos(list, 2)).startsWith(QStringLiteral("<b>")));
    EXPECT_EQ(tipAt(*list.viewport(), entryPos(list, 1)), QStringLiteral("none"));
}

TEST(CutTipsTest, ACellAndAHeadingThatAreCutShowTheirText)
{
    ShownForm form;
    auto& grid = form.add<Grid>(u"grd", GridDesign{3, 2, 1, 0});
    grid.Move(0, 0, 6000, 3000);
    grid.setColWidth(0, 900);
    grid.setColWidth(1, 3900);
    grid.setTextMatrix(0, 0, u"飼い主のメールアドレス");
    grid.setTextMatrix(0, 1, u"名前");
    grid.setTextMatrix(1, 0, kLong);
    grid.setTextMatrix(1, 1, u"短い");
    form.Show();
    EXPECT_EQ(fromQt(tipAt(*grid.viewport(), grid.cellRect(1, 0).center())), kLong);
    EXPECT_EQ(tipAt(*grid.viewport(), grid.cellRect(1, 1).center()), QStringLiteral("none"));
    QWidget& headings = *grid.horizontalHeader()->viewport();
    EXPECT_EQ(fromQt(tipAt(headings, QPoint(10, 5))), u"飼い主のメールアドレス");
    EXPECT_EQ(tipAt(headings, QPoint(100, 5)), QStringLiteral("none"));
}

}

}
