// The lines of a stored text: their ends are CR LF, and a lone CR where the store cut a
// very long line.
#pragma once
#include "platform/runtime/text.h"

#include <algorithm>

namespace tolvek {

class TextLines {
public:
    explicit TextLines(TextView text) : rest_(text) {}

    // False at the end; a text that ends with a line end has no empty line after it.
    bool next(TextView& line)
    {
        if (rest_.empty()) return false;
        const std::size_t end = std::min(rest_.find_first_of(u"\r\n"), rest_.size());
        line = rest_.substr(0, end);
        const bool isPair = rest_.substr(end).starts_with(u"\r\n");
        rest_.remove_prefix(std::min(rest_.size(), end + (isPair ? 2 : 1)));
        return true;
    }

private:
    TextView rest_;
};

}
