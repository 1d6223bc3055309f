#include "import/mail_fields.h"
#include "import_fixture.h"

namespace tolvek::test {
namespace {

class EdStringTest : public ImportTest {};

TEST_F(EdStringTest, BlanksEveryMarkWhereverItStandsAndTrims)
{
    const struct {
        Text source, cleaned;
    } cases[] = {
        {u"", u""},
        {u"  taro  ", u"taro"},
        {u"<taro@x.jp>", u"taro@x.jp"},
        {u"(a)<b>\\c", u"a  b  c"},
        {u"((((((x))))))", u"x"},
        {u"a  b", u"a  b"},
        {u"　(　)　", u""},
        {u"[a]{b}", u"[a]{b}"},
    };
    for (const auto& each : cases) {
        Text result = u"old";
        edString(each.source, result);
        EXPECT_EQ(result, each.cleaned);
    }
}

TEST_F(EdStringTest, TakesFullWidthMarksForTheSame)
{
    Text result;
    edString(u"（太郎）＜仮＞", result);
    EXPECT_EQ(result, u"太郎  仮");
}

TEST_F(EdStringTest, MayWriteItsResultOverItsSource)
{
    Text text = u"<taro>";
    edString(text, text);
    EXPECT_EQ(text, u"taro");
}

}
}
