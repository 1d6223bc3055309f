#include "platform/system/mapped_input.h"

#include "platform/system/windows/handle.h"

namespace tolvek {

namespace {

void* mapped(HANDLE file)
{
    const Handle mapping(::CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr));
    return mapping ? ::MapViewOfFile(mapping.get(), FILE_MAP_READ, 0, 0, 0) : nullptr;
}

}

MappedInput::MappedInput()
{
    const HANDLE input = ::GetStdHandle(STD_INPUT_HANDLE);
    LARGE_INTEGER size{};
    if (::GetFileType(input) != FILE_TYPE_DISK || !::GetFileSizeEx(input, &size)) return;
    size_ = static_cast<std::size_t>(size.QuadPart);
    // The system refuses to map an empty file; it is readable all the same.
    if (size_ > 0) bytes_ = mapped(input);
    isReadable_ = size_ == 0 || bytes_ != nullptr;
}

MappedInput::~MappedInput()
{
    if (bytes_) ::UnmapViewOfFile(bytes_);
}

}
