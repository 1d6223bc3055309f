// The exceptions for an unusable file. Their messages are for debugging only.
#pragma once
#include <stdexcept>

namespace tolvek::jet {

// The file isn't in a state that its engine would have left.
class Damage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The library doesn't know this format; the file may be sound.
class NotUnderstood : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline void require(bool sound, const char* what)
{
    if (!sound) throw Damage(what);
}

}
