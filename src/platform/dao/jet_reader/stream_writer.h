// Writes the items of the stream. If the receiving program has gone, this one ends.
#pragma once
#include "platform/dao/jet_reader/stream_format.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace tolvek::jet {

class StreamWriter {
public:
    explicit StreamWriter(int descriptor);
    ~StreamWriter();
    StreamWriter(const StreamWriter&) = delete;
    StreamWriter& operator=(const StreamWriter&) = delete;

    void item(Item kind, std::string_view bytes = {});
    void number(std::int64_t value);
    void column(ColumnType type, std::uint32_t size, std::string_view name);
    void flush();

private:
    void put(std::string_view bytes);
    std::FILE* file_;
};

}
