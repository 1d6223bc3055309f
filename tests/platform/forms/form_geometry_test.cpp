#include "platform/forms/form.h"
#include "platform/forms/screen.h"
#include "platform/runtime/runtime_error.h"
#include "test_form.h"

#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(FormGeometryTest, TitleBarBordersAndMenuCountSixHundredByOneHundredAndTwenty)
{
    TestForm form;
    form.setWidth(11745);
    form.setHeight(7404);
    form.Show();
    EXPECT_EQ(form.client().size(), QSize(775, 454)); // 6804 twips are 453.6 pixels
}

TEST(FormGeometryTest, WithoutRoomForAMenuBarTheTitleAloneCounts)
{
    struct TitledForm : TestForm {
        TitledForm() { setTitleOnly(); }
    } form;
    form.setWidth(9225);
    form.setHeight(5445);
    form.Show();
    EXPECT_EQ(form.client().size(), QSize(607, 338));
    form.window()->resize(607, 348);
    EXPECT_FLOAT_EQ(form.Height(), 5595);
    EXPECT_FLOAT_EQ(form.Width(), 9225);
}

TEST(FormGeometryTest, AFormWithoutABorderIsAllClient)
{
    TestForm form(u"frmSplash", BorderStyle::None);
    form.setWidth(6000);
    form.setHeight(3000);
    form.Show();
    EXPECT_EQ(form.client().size(), QSize(400, 200));
}

TEST(FormGeometryTest, WhatCodeHasSetIsKeptUntilTheUserChangesIt)
{
    TestForm form;
    form.setWidth(11745);
    form.setHeight(7404);
    form.Show();
    EXPECT_FLOAT_EQ(form.Height(), 7404);
    form.window()->resize(form.window()->width() + 10, form.window()->height());
    EXPECT_FLOAT_EQ(form.Width(), 11895);
    EXPECT_FLOAT_EQ(form.Height(), 7404); // only the width was dragged
    form.window()->resize(form.window()->width(), form.window()->height() + 10);
    EXPECT_FLOAT_EQ(form.Height(), 464 * 15 + 600);
}

TEST(FormGeometryTest, MaximisingAndBackGivesTheOldValueAgain)
{
    TestForm form;
    form.setWidth(6000);
    form.setHeight(7404);
    form.Show();
    form.setWindowState(2);
    EXPECT_EQ(form.WindowState(), 2);
    form.window()->resize(780, 560); // as the window manager does
    EXPECT_FLOAT_EQ(form.Width(), 11820);
    form.setWindowState(0);
    form.window()->resize(392, 454);
    EXPECT_FLOAT_EQ(form.Width(), 6000);
    EXPECT_FLOAT_EQ(form.Height(), 7404);
}

TEST(FormGeometryTest, ASizeSetWhileLoadedFiresResizeOnceForEachChange)
{
    TestForm form;
    form.Show();
    form.events.clear();
    form.setWidth(9000);
    form.setWidth(9000);
    EXPECT_EQ(form.events.size(), 1U);
    form.window()->resize(700, 500);
    EXPECT_EQ(form.events.size(), 2U);
}

TEST(FormGeometryTest, AWindowDraggedTooSmallSnapsBackAndTheInnerEventFallsThrough)
{
    TestForm form;
    int runs = 0;
    bool busy = false;
    form.resize = [&](TestForm& f) {
        if (busy) return;
        busy = true;
        ++runs;
        if (f.Height() < 7404) f.setHeight(7404);
        if (f.Width() < 11745) f.setWidth(11745);
        busy = false;
    };
    form.setWidth(12000);
    form.setHeight(8000);
    form.Show();
    form.window()->resize(300, 200);
    EXPECT_EQ(runs, 2); // the first showing and the drag
    EXPECT_FLOAT_EQ(form.Width(), 11745);
    EXPECT_FLOAT_EQ(form.Height(), 7404);
    EXPECT_EQ(form.client().size(), QSize(775, 454));
}

TEST(FormGeometryTest, PositionsAreOfTheFrameAndKeptAsSet)
{
    TestForm form;
    form.setLeft(1001);
    form.setTop(-299);
    form.Show();
    EXPECT_EQ(form.window()->pos(), QPoint(67, -19));
    EXPECT_FLOAT_EQ(form.Left(), 1001);
    EXPECT_FLOAT_EQ(form.Top(), -299);
    form.window()->move(100, 50);
    EXPECT_FLOAT_EQ(form.Left(), 1500);
    EXPECT_FLOAT_EQ(form.Top(), 750);
    form.Unload();
    EXPECT_FLOAT_EQ(form.Left(), 1500);
}

TEST(FormGeometryTest, ALargeSecondScreenGoesBeyond16Bits)
{
    TestForm form;
    form.setLeft(45000);
    form.Show();
    EXPECT_FLOAT_EQ(form.Left(), 45000);
}

TEST(FormGeometryTest, TheScreenIsThePrimaryOneInTwips)
{
    const QSize size = QGuiApplication::primaryScreen()->geometry().size();
    EXPECT_FLOAT_EQ(Screen::Width(), static_cast<float>(size.width() * 15));
    EXPECT_FLOAT_EQ(Screen::Height(), static_cast<float>(size.height() * 15));
}

TEST(FormGeometryTest, CentresOnTheScreenAndOverItsOwner)
{
    TestForm form, dialog;
    form.setWidth(6000);
    form.setHeight(4500);
    form.CentreOnScreen();
    EXPECT_FLOAT_EQ(form.Left(), (Screen::Width() - 6000) / 2);
    EXPECT_FLOAT_EQ(form.Top(), (Screen::Height() - 4500) / 2);
    dialog.setWidth(3000);
    dialog.setHeight(1500);
    dialog.CentreOver(form);
    EXPECT_FLOAT_EQ(dialog.Left(), form.Left() + 1500);
    EXPECT_FLOAT_EQ(dialog.Top(), form.Top() + 1500);
}

TEST(FormGeometryTest, TwipsOfAFormAreWhole)
{
    TestForm form;
    form.setLeft(3807.25F);
    form.setWidth(8000.75F);
    EXPECT_FLOAT_EQ(form.Left(), 3807);
    EXPECT_FLOAT_EQ(form.Width(), 8001);
}

TEST(FormGeometryTest, AMinimisedWindowKeepsItsValuesAndItsLayout)
{
    TestForm form;
    form.setWidth(9000);
    form.setHeight(6000);
    form.Show();
    form.events.clear();
    form.setWindowState(1);
    EXPECT_EQ(form.WindowState(), 1);
    EXPECT_FLOAT_EQ(form.Width(), 9000);
    EXPECT_FLOAT_EQ(form.Height(), 6000);
    EXPECT_TRUE(form.events.empty());
    EXPECT_THROW(form.setWindowState(3), RuntimeError);
}

TEST(FormGeometryTest, AStateSetBeforeTheShowingIsTakenThen)
{
    TestForm form;
    form.setWindowState(2);
    EXPECT_EQ(form.WindowState(), 2);
    form.Show();
    EXPECT_TRUE(form.window()->isMaximized());
}

}

}
