// Catches what the library prints on the standard error: it tells of most
// damage in no other way. Only from here on, since the system's loader may have
// said something there, too.
#pragma once

namespace tolvek::jet {

class Complaints {
public:
    Complaints();
    ~Complaints();
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;
    bool any() const;

private:
    int notes_;
};

}
