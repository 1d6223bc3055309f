// What is wrong with a file. The words are for a debugger.
#pragma once
#include <stdexcept>

namespace tolvek::jet {

// The file isn't what its engine would have left.
class Damage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The library doesn't know this form of file, which may be a sound one.
class NotUnderstood : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline void require(bool sound, const char* what)
{
    if (!sound) throw Damage(what);
}

}
