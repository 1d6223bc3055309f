#include "converter/html_text.h"

#include "converter/html_pieces.h"
#include "converter/mutation.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::string read(const std::string& html)
{
    Text text;
    HtmlReader page([&](TextView piece) { text += piece; });
    page.add(fromUtf8(html));
    page.finish();
    return toUtf8(text);
}

TEST(HtmlTextTest, NamesItsCharset)
{
    EXPECT_EQ(charsetOfHtml("<meta charset=utf-8>"), "utf-8");
    EXPECT_EQ(charsetOfHtml("<META content=\"text/html; charset='EUC-JP'\">"), "euc-jp");
    EXPECT_EQ(charsetOfHtml("charset=utf-8"), "");
}

TEST(HtmlTextTest, NothingHiddenIsShown)
{
    EXPECT_EQ(read("<div style='display: none'>a</div><!-- b --><select><option>c</select>d"),
              "d\n");
}

// The parser recurses once per element, and reopens unclosed elements in each
// paragraph.
TEST(HtmlTextTest, EndlessNestingIsReadInPieces)
{
    EXPECT_EQ(htmlPiece("<p>a<b>b</b>"), 12u);
    for (const char* piece : {"<div>", "<b>", "<font color=1><p>", "<table><tr><td>", "<a href=x>",
                              "</div><blockquote>", "<ul><li>"}) {
        const std::string html = repeated(piece, 100000) + "end";
        EXPECT_LT(htmlPiece(html), html.size()) << piece;
        EXPECT_NE(read(html).find("end"), std::string::npos) << piece;
    }
}

}
}
