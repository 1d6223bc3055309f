#include "letters/window/year_strip.h"

#include <gtest/gtest.h>

#include <QTest>

namespace tolvek::test {
namespace {

class YearStripTest : public ::testing::Test {
protected:
    YearStripTest()
    {
        strip.resize(600, 90);
        strip.showAxis(MonthAxis({1998, 1999}));
        strip.showCounts({{199803, 5, 2}, {199912, 1, 9}});
        QObject::connect(&strip, &YearStrip::chosen,
                         [this](const auto& months) { chosen.push_back(months); });
        strip.show();
    }
    // The middle of the cell of a month, in the plot.
    QPoint at(int cell) const { return {6 + (2 * cell + 1) * (600 - 12) / 48, 20}; }
    static std::string text(const std::optional<Months>& months)
    {
        if (!months) return "all";
        return std::to_string(months->first) + "-" + std::to_string(months->last);
    }
    std::string last() const { return chosen.empty() ? "none" : text(chosen.back()); }

    YearStrip strip;
    std::vector<std::optional<Months>> chosen;
};

TEST_F(YearStripTest, AClickTakesOneMonth)
{
    QTest::mouseClick(&strip, Qt::LeftButton, {}, at(2));
    EXPECT_EQ(last(), "199803-199803");
}

TEST_F(YearStripTest, DraggingTakesAStretchInEitherDirection)
{
    QTest::mousePress(&strip, Qt::LeftButton, {}, at(14));
    QTest::mouseMove(&strip, at(3));
    EXPECT_EQ(last(), "199804-199903");
    QTest::mouseMove(&strip, at(20));
    QTest::mouseRelease(&strip, Qt::LeftButton, {}, at(20));
    EXPECT_EQ(last(), "199903-199909");
    QTest::mouseMove(&strip, at(1));
    EXPECT_EQ(last(), "199903-199909") << "the button is up";
}

TEST_F(YearStripTest, DraggingBeyondTheEdgeStopsAtTheLastMonth)
{
    QTest::mousePress(&strip, Qt::LeftButton, {}, at(14));
    QTest::mouseMove(&strip, {5000, 20});
    EXPECT_EQ(last(), "199903-199912");
}

TEST_F(YearStripTest, AClickOnAYearTakesThatYear)
{
    QTest::mouseClick(&strip, Qt::LeftButton, {}, {at(13).x(), 85});
    EXPECT_EQ(last(), "199901-199912");
}

TEST_F(YearStripTest, TheKeyboardDoesTheSame)
{
    QTest::keyClick(&strip, Qt::Key_Home);
    EXPECT_EQ(last(), "199801-199801");
    QTest::keyClick(&strip, Qt::Key_Right);
    EXPECT_EQ(last(), "199802-199802");
    QTest::keyClick(&strip, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&strip, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(last(), "199802-199903");
    QTest::keyClick(&strip, Qt::Key_End);
    EXPECT_EQ(last(), "199912-199912");
    QTest::keyClick(&strip, Qt::Key_Escape);
    EXPECT_EQ(last(), "all");
}

TEST_F(YearStripTest, SaysWhatIsChosen)
{
    EXPECT_EQ(strip.accessibleDescription().toStdString(), "すべての期間");
    QTest::keyClick(&strip, Qt::Key_Home);
    QTest::keyClick(&strip, Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(strip.accessibleDescription().toStdString(),
              "1998年1月から1999年12月まで。受信 6 通、送信 11 通");
    EXPECT_FALSE(strip.accessibleName().isEmpty());
}

TEST_F(YearStripTest, ShowingAChoiceIsNoChoiceOfTheUser)
{
    strip.showChosen(Months{199802, 199805});
    strip.showChosen(std::nullopt);
    EXPECT_TRUE(chosen.empty());
}

TEST_F(YearStripTest, WithoutLettersItBearsEverything)
{
    strip.showAxis({});
    strip.showCounts({});
    strip.showChosen(Months{199801, 199802});
    QTest::mouseClick(&strip, Qt::LeftButton, {}, at(2));
    QTest::keyClick(&strip, Qt::Key_Right);
    QTest::keyClick(&strip, Qt::Key_End);
    strip.grab();
    EXPECT_TRUE(chosen.empty());
}

TEST_F(YearStripTest, ReceivedLettersGoUpAndSentOnesDown)
{
    const QImage picture = strip.grab().toImage();
    const int middle = at(23).x();
    QColor above, below;
    for (int y = 0; y < 66; ++y) {
        const QColor pixel = picture.pixelColor(middle, y);
        if (pixel.saturation() < 120) continue;
        (pixel.blue() > pixel.red() ? above : below) = pixel;
    }
    EXPECT_TRUE(above.isValid());
    EXPECT_TRUE(below.isValid());
}

}
}
