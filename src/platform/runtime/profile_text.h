// The text of a settings file. Every byte that isn't part of a written value is
// preserved.
//
// The text is kept as bytes of code page 932; only names are decoded, because "]"
// or "[" may be the second byte of a character. If a section or key occurs more
// than once, the first one counts. The headings are found once, and a key is
// searched for in its section only, so that reading a very long file stays fast.
#pragma once
#include "platform/runtime/text.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace tolvek {

class ProfileText {
public:
    explicit ProfileText(std::string bytes);

    // The value as a reader gets it, without outer blanks and one pair of quotes.
    std::optional<std::string> value(TextView section, TextView key) const;
    // True if the text has changed. A value that reads the same is left unchanged.
    bool setValue(TextView section, TextView key, std::string_view value);
    const std::string& bytes() const { return bytes_; }

private:
    // For a section: from the line after its heading to the next heading. For a
    // line: without its line end.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };
    void findSections();
    std::optional<Range> findSection(TextView section) const;
    std::optional<Range> findKey(Range section, TextView key) const;
    std::size_t placeForKey(Range section) const;
    std::size_t addSection(TextView section); // returns the position for its first key
    // returns the position after it
    std::size_t insertLine(std::size_t at, const std::string& content);
    std::string lineEnd() const;
    std::string_view in(Range range) const;

    std::string bytes_;
    std::map<Text, Range> sections_; // by folded name
};

}
