#include "app/guard.h"
#include "import/mail_fields.h"

#include <algorithm>
#include <array>

namespace tolvek {
namespace {

constexpr std::array<TextView, 5> kMarks{u"(", u")", u"<", u">", u"\\"};

// Blanks the first occurrence of each mark; false when none is left. All positions are
// determined before the first is overwritten.
bool blankFirstMarks(Text& text)
{
    std::array<int, kMarks.size()> found{};
    std::transform(kMarks.begin(), kMarks.end(), found.begin(),
                   [&](TextView mark) { return inStr(text, mark, Compare::TextMode); });
    bool any = false;
    for (int position : found) {
        if (position > 0) overwrite(text, position, u" ", 1);
        any = any || position > 0;
    }
    return any;
}

}

void edString(const Text& source, Text& result)
{
    const ResumeNext on{u"edString"};
    Text copy = source;
    on([&] {
        // The length bounds the loop; a text can't hold more marks than bytes.
        for (int left = ansiLength(copy); left > 0 && blankFirstMarks(copy); --left) {
        }
    });
    on([&] { result = trim(copy); });
}

}
