#include "converter/flowed_text.h"

#include <algorithm>

namespace tolvek {

namespace {

TextView takeLine(TextView& text)
{
    const std::size_t end = std::min(text.find(u'\n'), text.size());
    TextView line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    while (!line.empty() && line.back() == u'\r')
        line.remove_suffix(1);
    return line;
}

Text marks(std::size_t depth)
{
    return depth == 0 ? Text() : Text(depth, u'>') + u' ';
}

}

Text unflowed(TextView text, bool deleteBlank)
{
    Text out;
    bool open = false; // the line before continues
    std::size_t depthBefore = 0;
    while (!text.empty()) {
        TextView line = takeLine(text);
        const std::size_t depth = std::min(line.find_first_not_of(u'>'), line.size());
        line.remove_prefix(depth);
        // Senders put a blank before lines that begin with a blank, ">" or "From ".
        if (line.starts_with(u" ")) line.remove_prefix(1);
        // The signature mark ends in a blank but never joins a paragraph.
        const bool signature = line == u"-- ";
        const bool joined = open && depth == depthBefore && !signature;
        if (open && !joined) out += u'\n';
        if (!joined) out += marks(depth);
        open = !signature && line.ends_with(u" ");
        if (open && deleteBlank) line.remove_suffix(1);
        out += line;
        if (!open) out += u'\n';
        depthBefore = depth;
    }
    return out;
}

}
