#include "platform/system/captured_errors.h"

#include "platform/system/windows/windows_api.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>

namespace tolvek {

namespace {

constexpr unsigned kRoom = 1 << 20; // bytes that are taken without a reader

HANDLE readingEnd(int descriptor)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

}

// A pipe that nobody reads, because a child may have no folder in which it can make a
// file.
CapturedErrors::CapturedErrors() : notes_(-1)
{
    int ends[2] = {-1, -1};
    // Without the capture corruption would go unnoticed, so the program must not
    // continue.
    if (_pipe(ends, kRoom, _O_BINARY) != 0 || _dup2(ends[1], _fileno(stderr)) != 0) std::abort();
    _close(ends[1]);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
    notes_ = ends[0];
}

CapturedErrors::~CapturedErrors()
{
    _close(notes_);
}

bool CapturedErrors::any() const
{
    std::fflush(stderr);
    DWORD waiting = 0;
    // A pipe that can't be asked counts as full of complaints.
    return !::PeekNamedPipe(readingEnd(notes_), nullptr, 0, nullptr, &waiting, nullptr) ||
           waiting != 0;
}

}
