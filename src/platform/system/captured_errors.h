// Captures what a library prints on standard error during this object's lifetime,
// for libraries that report corruption in no other way. Lines printed earlier, by
// the dynamic loader for example, don't count.
#pragma once

namespace tolvek {

class CapturedErrors {
public:
    CapturedErrors();
    ~CapturedErrors();
    CapturedErrors(const CapturedErrors&) = delete;
    CapturedErrors& operator=(const CapturedErrors&) = delete;
    bool any() const;

private:
    int notes_;
};

}
