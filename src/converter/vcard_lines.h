// The cards of a vCard file and the properties of a card, as raw bytes: charset and
// transfer encoding are not decoded.
//
// A card without its end, or with the beginning of another one inside, was cut off: it
// alone is skipped. The only card allowed inside another is that of an agent, after an
// AGENT property without a value; it belongs to another person and is skipped with all
// its lines.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tolvek {

struct VcardParameter {
    std::string name;  // lower case; version 2.1 has values without a name
    std::string value; // quotes undone
};

struct VcardProperty {
    std::string name; // lower case, without its group
    std::vector<VcardParameter> parameters;
    std::string value; // unfolded; soft line breaks are kept, with LF

    // The first parameter of that name, "" if missing.
    std::string parameter(std::string_view parameterName) const;
    // Among the types, including nameless ones. `type` in lower case.
    bool hasType(std::string_view type) const;
    std::string encoding() const; // "quoted-printable", "base64" or ""
};

// Tracks whether the lines read so far are in no card, in one, or in an agent's inside
// it.
class VcardNesting {
public:
    enum class Step { Inside, Opened, Agent, Closed };

    explicit VcardNesting(int depth = 0) : depth_(depth) {}
    Step take(std::string_view line);

private:
    int depth_;
    bool agentNext_ = false;
};

// Returns one card after the other, without BEGIN and END.
class VcardScanner {
public:
    explicit VcardScanner(std::string_view bytes) : rest_(bytes) {}
    bool next(std::string_view& card);

private:
    std::string_view rest_;
};

// Of one card. Lines end with CR, LF, CR LF or CR CR LF (left by gateways).
class VcardProperties {
public:
    // The rest of a longer property is dropped: only pictures are so long.
    static constexpr std::size_t kLongest = 1 << 15;

    explicit VcardProperties(std::string_view card);
    bool next(VcardProperty& property);

private:
    bool nextLine(std::string_view& line);
    bool nextPiece(bool soft, std::string_view& line);

    std::string_view rest_;
    bool keepsBlanks_; // version 2.1 folds before a blank of the text
    VcardNesting nesting_{1};
};

}
