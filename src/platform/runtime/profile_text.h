// The text of a settings file, of which every byte stays that isn't written.
//
// Everything is bytes of code page 932; names alone are decoded, since a "]" or
// "[" may be the second half of a character. Of sections and keys that stand
// twice the first one counts. The headings are found once, and a key only among
// the lines of its section: also a very long file is read in one go.
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

    // The value as it is to be read: outer blanks and one pair of quotes gone.
    std::optional<std::string> value(TextView section, TextView key) const;
    // True when the text has changed; a value that reads the same is left alone.
    bool setValue(TextView section, TextView key, std::string_view value);
    const std::string& bytes() const { return bytes_; }

private:
    // From the line below a heading up to the next heading, or of a line without its end.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };
    void findSections();
    std::optional<Range> findSection(TextView section) const;
    std::optional<Range> findKey(Range section, TextView key) const;
    std::size_t placeForKey(Range section) const;
    std::size_t addSection(TextView section); // the place for its first key
    std::size_t insertLine(std::size_t at, const std::string& content); // the place after it
    std::string lineEnd() const;
    std::string_view in(Range range) const;

    std::string bytes_;
    std::map<Text, Range> sections_; // by their folded names
};

}
