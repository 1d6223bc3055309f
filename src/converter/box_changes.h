// Whether another program writes to a mail box while it is read.
//
// A box that only grows is sound up to its last mail, which may be incomplete; stored
// like that it would stay incomplete for ever, because the next read finds its key in
// the archive. A box that was changed in any other way may be a mixture of two states
// anywhere.
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
