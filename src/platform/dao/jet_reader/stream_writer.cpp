#include "platform/dao/jet_reader/stream_writer.h"

#include <cstdlib>

namespace tolvek::jet {

namespace {

template <class Number> std::string littleEndian(Number value)
{
    std::string bytes;
    for (std::size_t i = 0; i < sizeof value; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

}

// Every failure aborts: the program takes only a stream that ends with exit code kWhole.
StreamWriter::StreamWriter(int descriptor) : file_(fdopen(descriptor, "wb"))
{
    if (!file_) std::abort();
}

StreamWriter::~StreamWriter()
{
    std::fclose(file_);
}

void StreamWriter::put(std::string_view bytes)
{
    if (bytes.empty()) return; // fwrite must not be given a null pointer
    if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) std::abort();
}

void StreamWriter::item(Item kind, std::string_view bytes)
{
    put(static_cast<char>(kind) + littleEndian(static_cast<std::uint32_t>(bytes.size())));
    put(bytes);
}

void StreamWriter::number(std::int64_t value)
{
    item(Item::Number, littleEndian(static_cast<std::uint64_t>(value)));
}

void StreamWriter::column(ColumnType type, std::uint32_t size, std::string_view name)
{
    item(Item::Column, static_cast<char>(type) + littleEndian(size) + std::string(name));
}

void StreamWriter::flush()
{
    if (std::fflush(file_) != 0) std::abort();
}

}
