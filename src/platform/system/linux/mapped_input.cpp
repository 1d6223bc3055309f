#include "platform/system/mapped_input.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tolvek {

MappedInput::MappedInput()
{
    struct stat about {};
    if (fstat(STDIN_FILENO, &about) != 0 || !S_ISREG(about.st_mode)) return;
    size_ = static_cast<std::size_t>(about.st_size);
    // mmap rejects a length of 0; an empty file is readable all the same.
    if (size_ > 0) bytes_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, STDIN_FILENO, 0);
    isReadable_ = bytes_ != MAP_FAILED;
}

MappedInput::~MappedInput()
{
    if (isReadable_ && bytes_) munmap(bytes_, size_);
}

}
