#include "converter/box_changes.h"

#include <system_error>

namespace tolvek {

namespace fs = std::filesystem;

BoxChanges::BoxChanges(const fs::path& box) : box_(box), before_(stampOf(box)) {}

BoxChanges::Kind BoxChanges::kind() const
{
    const Stamp now = stampOf(box_);
    // Mail programs append, so growth counts as such whatever the time is. The same
    // size with another time means that bytes were overwritten.
    if (now.size > before_.size) return Kind::Grown;
    return now.size == before_.size && now.time == before_.time ? Kind::None : Kind::Rewritten;
}

// A failing query gives the same value each time; reading the box reports the error
// itself.
BoxChanges::Stamp BoxChanges::stampOf(const fs::path& box)
{
    std::error_code unknown;
    return {fs::file_size(box, unknown), fs::last_write_time(box, unknown)};
}

}
