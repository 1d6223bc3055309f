// What a library prints on the standard error while this lives: for one that
// reports damage in no other way. Earlier lines, of the system's loader, don't count.
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
