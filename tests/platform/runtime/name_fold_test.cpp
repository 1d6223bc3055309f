#include "platform/runtime/name_fold.h"

#include <gtest/gtest.h>

namespace tolvek::test {

TEST(NameFoldTest, CaseCompositionAndTwinsGo)
{
    EXPECT_EQ(foldedName(u"Tolvek.MDB"), u"tolvek.mdb");
    EXPECT_EQ(foldedName(u"ＴＯＬ"), u"ｔｏｌ");
    EXPECT_EQ(foldedName(u"か\u3099ハ\u309A"), u"がパ");
    EXPECT_EQ(foldedName(u"旅\u301C"), u"旅\uFF5E");
    EXPECT_EQ(foldedName(u"Ä𐐀"), u"ä𐐨");
    EXPECT_EQ(foldedName(u""), u"");
}

TEST(NameFoldTest, DifferentNamesStayDifferent)
{
    EXPECT_NE(foldedName(u"straße"), foldedName(u"strasse"));
    EXPECT_NE(foldedName(u"ガ"), foldedName(u"カ"));
    EXPECT_NE(foldedName(u"Ａ"), foldedName(u"A"));
}

}
