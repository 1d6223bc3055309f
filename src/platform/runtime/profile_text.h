// The text of a settings file as lines that keep every byte of their own.
//
// Everything is bytes of code page 932; names alone are decoded, since a "]" or
// "[" may be the second half of a character. Of sections and keys that stand
// twice the first one counts.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

class ProfileText {
public:
    explicit ProfileText(std::string_view bytes);

    // The value as it is to be read: outer blanks and one pair of quotes gone.
    std::optional<std::string> value(TextView section, TextView key) const;
    // True when the text has changed; a value that reads the same is left alone.
    bool setValue(TextView section, TextView key, std::string_view value);
    std::string bytes() const;

private:
    struct Line {
        std::string content;
        std::string end; // CR LF, LF, CR; "" behind the last line
    };
    using Lines = std::vector<Line>;

    // Positions in lines_; the section's first line below its heading and the
    // line behind its last.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };
    std::optional<Range> findSection(TextView section) const;
    std::optional<std::size_t> findKey(Range section, TextView key) const;
    std::size_t placeForKey(Range section) const;
    std::size_t addSection(TextView section); // the place for its first key
    void insertLine(std::size_t at, std::string content);
    std::string lineEnd() const;

    Lines lines_;
};

}
