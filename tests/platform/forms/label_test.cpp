#include "platform/forms/buttons.h"
#include "platform/forms/label.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvek::test {

namespace {

class LabelTest : public testing::Test {
protected:
    LabelTest() : label(form.add<Label>(u"lbl"))
    {
        label.Move(1500, 300, 1500, 300);
        onEvent(&label, &Label::Click, [this] { ++clicks; });
        form.Show();
    }
    QImage painted() { return label.grab().toImage(); }

    ShownForm form;
    Label& label;
    int clicks = 0;
};

TEST_F(LabelTest, MarkupAndAmpersandsAreOrdinaryText)
{
    label.setCaption(u"太字 & 斜体 <b>");
    EXPECT_EQ(label.Caption(), u"太字 & 斜体 <b>");
    EXPECT_EQ(label.text(), QStringLiteral("太字 & 斜体 <b>"));
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    const QImage with = painted();
    label.setCaption(u"太字  斜体 <b>");
    EXPECT_NE(painted(), with);
}

TEST_F(LabelTest, LineEndsOfAllFormsMakeLinesAndTheCaptionStays)
{
    label.setCaption(u"a\r\nb\n\rc\rd");
    EXPECT_EQ(label.text(), QStringLiteral("a\nb\nc\nd"));
    EXPECT_EQ(label.Caption(), u"a\r\nb\n\rc\rd");
}

// The rows of the image with painted pixels.
std::vector<int> inkedRows(const QImage& image)
{
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != image.pixelColor(image.width() - 1, 0)) {
                rows.push_back(y);
                break;
            }
    return rows;
}

TEST_F(LabelTest, ThreeLinesOfNinePointsAllShowIn41Pixels)
{
    label.setFontOf(u"ＭＳ 明朝", 9);
    label.setHeight(615);
    label.setCaption(u"国\r\n国");
    const std::vector<int> two = inkedRows(painted());
    label.setCaption(u"国\r\n国\r\n国");
    const std::vector<int> three = inkedRows(painted());
    EXPECT_EQ(three.size() * 2, two.size() * 3);
    EXPECT_LT(three.back(), 40);
}

TEST_F(LabelTest, AWrappingLabelTakesMoreLines)
{
    label.setHeight(1500);
    label.setCaption(u"警告 この プログラム は 大切 な メール を 保存 します");
    const std::vector<int> one = inkedRows(painted());
    label.setWordWrap(true);
    EXPECT_GT(inkedRows(painted()).size(), one.size());
}

TEST_F(LabelTest, AClickIsALeftPressAndReleaseInside)
{
    click(label);
    EXPECT_EQ(clicks, 1);
    pressAt(label, {5, 5}, Qt::RightButton);
    EXPECT_EQ(clicks, 1);
    label.setEnabled(false);
    click(label);
    EXPECT_EQ(clicks, 1);
}

TEST_F(LabelTest, AMouseTransparentLabelLeavesTheClickToWhatLiesBeneath)
{
    label.setMouseTransparent(true);
    auto& button = form.add<CommandButton>(u"comEnd");
    button.Move(1500, 300, 1500, 300);
    button.show();
    label.raise();
    EXPECT_EQ(form.client().childAt(label.geometry().center()), &button);
}

TEST_F(LabelTest, LabelsLieBeneathButtonsWhicheverCameFirst)
{
    auto& button = form.add<CommandButton>(u"cmd");
    button.Move(3000, 300, 1500, 300);
    button.show();
    auto& late = form.add<Label>(u"lblLate");
    late.Move(3000, 300, 1500, 300);
    late.show();
    EXPECT_EQ(form.client().childAt(button.geometry().center()), &button);
}

TEST_F(LabelTest, AnOverflowingTextGrowsToTheLeftAndThePropertiesStay)
{
    label.setTextAlignment(Alignment::Right);
    label.setOverflow(1500);
    label.setCaption(u"表示件数　：　３２７６７ ／ ３２７６７件");
    EXPECT_EQ(label.geometry().right() + 1, 200);
    EXPECT_LT(label.geometry().left(), 100);
    EXPECT_GE(label.width(), label.sizeHint().width());
    EXPECT_FLOAT_EQ(label.Left(), 1500);
    EXPECT_FLOAT_EQ(label.Width(), 1500);
    label.setCaption(u"0");
    EXPECT_EQ(label.geometry(), QRect(100, 20, 100, 20));
}

TEST_F(LabelTest, ATextThatAlmostFitsIsSetNarrowerAndAShortOneInItsOwnWidth)
{
    label.setTextAlignment(Alignment::Right);
    label.setOverflow(1500);
    const int own = label.fontMetrics().horizontalAdvance(QStringLiteral("0"));
    Text wide = u"0";
    while (label.fontMetrics().horizontalAdvance(toQt(wide)) <= 110)
        wide += u'0';
    label.setCaption(wide);
    EXPECT_LE(label.fontMetrics().horizontalAdvance(toQt(wide)), 100);
    EXPECT_EQ(label.geometry(), QRect(100, 20, 100, 20));
    label.setCaption(u"0");
    EXPECT_EQ(label.fontMetrics().horizontalAdvance(QStringLiteral("0")), own);
}

TEST_F(LabelTest, AlignmentMovesTheText)
{
    label.setCaption(u"x");
    const QImage atLeft = painted();
    label.setTextAlignment(Alignment::Centre);
    const QImage centred = painted();
    label.setTextAlignment(Alignment::Right);
    EXPECT_NE(atLeft, centred);
    EXPECT_NE(centred, painted());
    EXPECT_EQ(label.TextAlignment(), Alignment::Right);
}

TEST_F(LabelTest, AClickableLabelShowsAHandAndIsUnderlinedBelowThePointer)
{
    label.setCaption(u"アドレス");
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
    label.setClickable(true);
    EXPECT_EQ(label.cursor().shape(), Qt::PointingHandCursor);
    const QImage before = painted();
    label.setAttribute(Qt::WA_UnderMouse);
    EXPECT_NE(painted(), before);
}

}

}
