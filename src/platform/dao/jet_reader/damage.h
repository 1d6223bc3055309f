// The file isn't what its engine would have left. The words are for a debugger.
#pragma once
#include <stdexcept>

namespace tolvek::jet {

class Damage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline void require(bool sound, const char* what)
{
    if (!sound) throw Damage(what);
}

}
