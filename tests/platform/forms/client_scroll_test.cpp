// Forms for which the screen has no room.
#include "platform/forms/client_scroll.h"

#include "platform/forms/buttons.h"
#include "platform/runtime/do_events.h"
#include "support/screen_driver.h"
#include "support/small_screen.h"
#include "test_form.h"

#include <QMenuBar>
#include <QScrollBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

constexpr float kLeast = 9000; // twips

class ClientScrollTest : public testing::Test {
protected:
    // A form of 600 by 560 pixels below its title, with a button in each corner.
    ClientScrollTest()
    {
        form.setWidth(600 * 15 + 120);
        form.setHeight(560 * 15 + 600);
        form.build = [this](TestForm& built) {
            first = new CommandButton(built, u"first");
            first->Move(0, 0, 1500, 450);
            last = new CommandButton(built, u"last");
            last->Move(500 * 15, 530 * 15, 1500, 450);
        };
    }
    QRect shownPart(const QWidget& control) const
    {
        const QRect place(control.mapTo(form.window(), QPoint()), control.size());
        QRect view = form.window()->rect();
        for (const QScrollBar* bar : bars())
            (bar->orientation() == Qt::Vertical)
                ? view.setRight(std::min(view.right(), bar->x() - 1))
                : view.setBottom(std::min(view.bottom(), bar->y() - 1));
        return place & view;
    }
    std::vector<QScrollBar*> bars() const
    {
        std::vector<QScrollBar*> shown;
        for (QScrollBar* bar :
             form.window()->findChildren<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly))
            if (bar->isVisible()) shown.push_back(bar);
        return shown;
    }
    QScrollBar& onlyBar() const
    {
        EXPECT_EQ(bars().size(), 1u);
        return *bars().front();
    }

    TestForm form{u"frmTest", BorderStyle::FixedDialog};
    CommandButton *first = nullptr, *last = nullptr;
};

TEST_F(ClientScrollTest, AFormThatFitsHasNoBars)
{
    const SmallScreen screen(1024, 768);
    form.Show();
    EXPECT_TRUE(bars().empty());
    EXPECT_EQ(form.window()->size(), QSize(600, 560));
}

TEST_F(ClientScrollTest, AFormThatIsTooHighScrollsAndKeepsItsSize)
{
    const SmallScreen screen(1024, 500);
    form.Show();
    EXPECT_EQ(form.Height(), 560 * 15 + 600);
    EXPECT_EQ(form.Width(), 600 * 15 + 120);
    EXPECT_EQ(form.client().size(), QSize(600, 560));
    EXPECT_LT(form.window()->height(), 500);
    EXPECT_EQ(onlyBar().orientation(), Qt::Vertical);
    // The window is wider by the bar, so nothing is cut at the right.
    EXPECT_EQ(form.window()->width(), 600 + onlyBar().width());
}

TEST_F(ClientScrollTest, AFormThatIsTooWideScrollsToo)
{
    const SmallScreen screen(500, 768);
    form.Show();
    EXPECT_EQ(onlyBar().orientation(), Qt::Horizontal);
    EXPECT_EQ(form.client().size(), QSize(600, 560));
}

TEST_F(ClientScrollTest, AControlThatGetsTheFocusComesIntoView)
{
    const SmallScreen screen(400, 300);
    form.Show();
    form.window()->activateWindow();
    DoEventsNow();
    EXPECT_EQ(bars().size(), 2u);
    EXPECT_TRUE(shownPart(*last).isEmpty());
    last->SetFocus();
    EXPECT_EQ(shownPart(*last).size(), last->size());
    first->SetFocus();
    EXPECT_EQ(shownPart(*first).size(), first->size());
}

TEST_F(ClientScrollTest, TheWheelAndThePageKeysScroll)
{
    const SmallScreen screen(1024, 300);
    form.Show();
    QWheelEvent turn(QPointF(50, 200), form.window()->mapToGlobal(QPointF(50, 200)), {},
                     QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(form.window(), &turn);
    EXPECT_LT(form.client().y(), 0);
    key(*form.window(), Qt::Key_PageDown);
    key(*form.window(), Qt::Key_PageDown);
    EXPECT_EQ(onlyBar().value(), onlyBar().maximum());
    EXPECT_EQ(shownPart(*last).size(), last->size());
    key(*form.window(), Qt::Key_PageUp);
    key(*form.window(), Qt::Key_PageUp);
    EXPECT_EQ(form.client().pos(), QPoint(0, 0));
}

TEST_F(ClientScrollTest, ACutFormIsPutOntoTheScreenAndKeepsItsPosition)
{
    const SmallScreen screen(1024, 300);
    form.setLeft(-1500);
    form.setTop(-1500);
    form.Show();
    EXPECT_EQ(form.window()->pos(), QPoint(-100, 0)); // its width isn't cut
    EXPECT_EQ(form.Left(), -1500);
    EXPECT_EQ(form.Top(), -1500);
    form.window()->move(30, 20);
    EXPECT_EQ(form.Left(), 450);
    EXPECT_EQ(form.Top(), 300);
}

TEST_F(ClientScrollTest, TheMenuBarStaysAboveAScrolledForm)
{
    const SmallScreen screen(1024, 300);
    form.Load();
    form.menuBar().addAction(QStringLiteral("x"));
    form.Show();
    key(*form.window(), Qt::Key_PageDown);
    EXPECT_LT(form.client().y(), 0);
    EXPECT_EQ(form.menuBar().pos(), QPoint(0, 0));
    EXPECT_EQ(form.window()->childAt(5, 5), &form.menuBar());
}

TEST(ClientScrollSizableTest, ADraggedSideIsTheFormsOwnAndTheOtherStays)
{
    const SmallScreen screen(1024, 500);
    TestForm form;
    form.setWidth(600 * 15 + 120);
    form.setHeight(560 * 15 + 600);
    form.Show();
    form.window()->resize(700, form.window()->height());
    EXPECT_EQ(form.Width(), 700 * 15 + 120);
    EXPECT_EQ(form.Height(), 560 * 15 + 600);
}

// A form enforces a least size in its resize event, as the main window does. A window
// manager that insists on less gets it, or both would go on for ever.
TEST(ClientScrollSizableTest, AWindowKeptSmallerThanItsLeastSizeScrolls)
{
    TestForm form;
    form.resize = [](TestForm& resized) {
        if (resized.Width() < kLeast) resized.setWidth(kLeast);
        if (resized.Height() < kLeast) resized.setHeight(kLeast);
    };
    form.Show();
    form.window()->resize(500, 400);
    EXPECT_EQ(form.window()->size(), QSize(592, 560));
    form.window()->resize(500, 400);
    EXPECT_EQ(form.window()->size(), QSize(500, 400));
    EXPECT_EQ(form.client().size(), QSize(592, 560));
    EXPECT_EQ(form.Width(), kLeast);
    EXPECT_EQ(form.Height(), kLeast);
}

}

}
