#include "platform/system/mapped_file.h"

#include "platform/system/linux/descriptor.h"

#include <sys/mman.h>
#include <sys/stat.h>

namespace tolvek {

MappedFile::MappedFile(const std::filesystem::path& path)
{
    probeFile(FileOperation::Open, path);
    const Descriptor file(
        systemCall(path, [&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC); }));
    struct stat about {};
    systemCall(path, [&] { return fstat(file.number(), &about); });
    if (!S_ISREG(about.st_mode)) throwSystemError(EINVAL, path);
    size_ = static_cast<std::size_t>(about.st_size);
    if (size_ == 0) return; // mmap rejects a length of 0
    bytes_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file.number(), 0);
    if (bytes_ == MAP_FAILED) throwSystemError(errno, path);
}

MappedFile::~MappedFile()
{
    if (bytes_) munmap(bytes_, size_);
}

void MappedFile::release() const
{
    if (bytes_) madvise(bytes_, size_, MADV_DONTNEED);
}

}
