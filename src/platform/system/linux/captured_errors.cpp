#include "platform/system/captured_errors.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace tolvek {

CapturedErrors::CapturedErrors() : notes_(memfd_create("complaints", 0))
{
    // Without the capture corruption would go unnoticed, so the program must not
    // continue.
    if (notes_ < 0 || dup2(notes_, STDERR_FILENO) < 0) std::abort();
}

CapturedErrors::~CapturedErrors()
{
    close(notes_);
}

bool CapturedErrors::any() const
{
    std::fflush(stderr);
    return lseek(notes_, 0, SEEK_END) != 0;
}

}
