#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

TEST(FontsTest, FixedPitchStaysExactlyTwoToOneAtEverySize)
{
    for (const TextView name : {u"ＭＳ ゴシック", u"ＭＳ 明朝"})
        for (const float points : {8.0F, 9.0F, 9.75F, 10.0F, 10.5F, 11.0F, 12.0F, 20.0F}) {
            const QFontMetricsF metrics(platformFont({Text(name), points}));
            EXPECT_EQ(metrics.horizontalAdvance(toQt(u"漢字かな")),
                      metrics.horizontalAdvance(toQt(u"abcdefgh")))
                << toUtf8(name) << " " << points;
        }
}

TEST(FontsTest, PointsArePixelsAt96Dpi)
{
    EXPECT_EQ(platformFont({u"ＭＳ ゴシック", 9}).pixelSize(), 12);
    EXPECT_EQ(platformFont({u"ＭＳ Ｐ明朝", 12}).pixelSize(), 16);
    EXPECT_EQ(platformFont({u"ＭＳ Ｐ明朝", 9.75F}).pixelSize(), 13);
}

TEST(FontsTest, AnOddFixedPitchSizeTakesTheSmallerEvenOne)
{
    EXPECT_EQ(platformFont({u"ＭＳ 明朝", 9.75F}).pixelSize(), 12);
    EXPECT_EQ(platformFont({u"ＭＳ 明朝", 10.5F}).pixelSize(), 14);
}

TEST(FontsTest, AProgramFontIsAlwaysAnInstalledFamilyOfItsPitch)
{
    for (const TextView name : {u"ＭＳ ゴシック", u"ＭＳ 明朝", u"ＭＳ Ｐゴシック", u"ＭＳ Ｐ明朝"})
        EXPECT_TRUE(QFontDatabase::hasFamily(installedFamily(name))) << toUtf8(name);
    EXPECT_NE(installedFamily(u"ＭＳ ゴシック"), installedFamily(u"ＭＳ Ｐゴシック"));
    EXPECT_NE(installedFamily(u"ＭＳ 明朝"), installedFamily(u"ＭＳ Ｐ明朝"));
}

TEST(FontsTest, OtherNamesAreTakenAsTheyAre)
{
    EXPECT_EQ(installedFamily(u"IPAPMincho"), QStringLiteral("IPAPMincho"));
    EXPECT_FALSE(isFixedPitchName(u"IPAPMincho"));
    EXPECT_TRUE(isFixedPitchName(u"ＭＳ 明朝"));
    EXPECT_FALSE(isFixedPitchName(u"ＭＳ Ｐ明朝"));
}

TEST(FontsTest, BoldAndItalicGoIntoTheFont)
{
    const QFont font = platformFont({u"ＭＳ 明朝", 9, true, true});
    EXPECT_TRUE(font.bold());
    EXPECT_TRUE(font.italic());
}

TEST(FontsTest, ASizeOfNothingStillPaints)
{
    EXPECT_GE(platformFont({u"ＭＳ 明朝", 0}).pixelSize(), 1);
}

}

}
