#include "platform/dao/jet_reader/complaints.h"

#include <cstdio>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace tolvek::jet {

Complaints::Complaints() : notes_(memfd_create("complaints", 0))
{
    if (notes_ < 0 || dup2(notes_, STDERR_FILENO) < 0) std::abort();
}

Complaints::~Complaints()
{
    close(notes_);
}

bool Complaints::any() const
{
    std::fflush(stderr);
    return lseek(notes_, 0, SEEK_END) != 0;
}

}
