// Any Japanese text is converted unchanged, under each correct label and in each
// transfer encoding; only ' becomes ’.
//
// TOLVEK_ROUNDS=10000 tries that many instead of the fixed 300.
#include "converter/conversion.h"
#include "support/any_text.h"

#include "converter/temp_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tolvek::test {
namespace {

std::string joined(const std::vector<Text>& lines)
{
    std::string text;
    for (const Text& line : lines)
        text += (text.empty() ? "" : "\n") + toUtf8(line);
    return text;
}

TEST(AnyTextTest, ComesThroughAsItIs)
{
    const TempFolder folder;
    TextMaker maker;
    const char* more = std::getenv("TOLVEK_ROUNDS");
    for (int round = more != nullptr ? std::atoi(more) : 300; round > 0; --round) {
        const AnyMail mail = anyMail(maker, 1 + maker.below(12), "1 Jan 2000 1:00");
        writeBytes(folder / "box", mail.bytes);
        ASSERT_EQ(convertMailBox(folder / "box", folder / "Tolvek.Tmp").count, 1);
        const auto mails = readTemp(folder / "Tolvek.Tmp");
        ASSERT_EQ(mails[0].subject, toUtf8(mail.subject)) << mail.bytes;
        ASSERT_EQ(mails[0].text(), joined(mail.lines)) << mail.bytes;
    }
}

}
}
