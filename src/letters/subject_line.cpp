#include "letters/subject_line.h"

#include "letters/fold.h"

#include <array>

namespace tolvek {

namespace {

constexpr std::array<TextView, 8> kMarks{u"re",   u"fwd",  u"fw", u"aw",
                                         u"返信", u"転送", u"返", u"sv"};

// The length of "re:", "re^2:", "re[2]:" or "re(2):" at the beginning; 0 if there is none.
std::size_t markLength(TextView subject)
{
    for (const TextView mark : kMarks) {
        if (!subject.starts_with(mark)) continue;
        const std::size_t end = subject.find_first_not_of(u"^[]()0123456789 ", mark.size());
        if (end != TextView::npos && (subject[end] == u':' || subject[end] == u'>')) return end + 1;
    }
    return 0;
}

}

Text conversationSubject(TextView subject)
{
    const Text form = folded(subject);
    TextView rest = form;
    while (const std::size_t length = markLength(rest)) {
        rest.remove_prefix(length);
        while (rest.starts_with(u' '))
            rest.remove_prefix(1);
    }
    return Text(rest);
}

}
