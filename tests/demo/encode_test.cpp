#include "demo/encode.h"

#include "converter/charset.h"
#include "converter/encoded_words.h"
#include "converter/transfer.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

constexpr TextView kText = u"はな & ﾐｷ、①㈱髙ー表ソ～";

TEST(EncodeTest, EveryCharsetReadsBackTheSame)
{
    using sample::Charset;
    for (const Charset charset :
         {Charset::Iso2022Jp, Charset::ShiftJis, Charset::EucJp, Charset::Utf8}) {
        const std::string label = sample::label(charset);
        EXPECT_EQ(decodeCharset(sample::encoded(kText, charset), label), kText) << label;
        EXPECT_EQ(decodeEncodedWords(unfoldedText(
                      sample::headerText(u"きょうは、とてもよく晴れた日曜日です。", charset))),
                  u"きょうは、とてもよく晴れた日曜日です。")
            << label;
    }
}

TEST(EncodeTest, TransferEncodingsReadBackTheSame)
{
    const std::string bytes = toUtf8(kText) + "=\x01 end";
    EXPECT_EQ(decodeBase64(sample::base64(bytes)), bytes);
    EXPECT_EQ(decodeQuotedPrintable(sample::quotedPrintable(bytes)), bytes + "\n");
}

}
}
