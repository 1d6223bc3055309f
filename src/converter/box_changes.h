// Whether somebody writes to a mail box while it is read.
//
// A box that only grows is sound up to its last mail, which may be half of one;
// stored so, it would stay half for ever, because the next read knows its key. A
// box that was written in any other way may be spliced from two states anywhere.
#pragma once
#include <cstdint>
#include <filesystem>

namespace tolvek {

class BoxChanges {
public:
    enum class Kind { None, Grown, Rewritten };

    explicit BoxChanges(const std::filesystem::path& box); // before its first byte is read
    Kind kind() const;                                     // after its last

private:
    struct Stamp {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time;
    };
    static Stamp stampOf(const std::filesystem::path& box);

    std::filesystem::path box_;
    Stamp before_;
};

}
