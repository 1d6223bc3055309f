// Converts a field's bytes to the item that is sent for it.
#pragma once
#include "platform/dao/jet_reader/jet_file.h"
#include "platform/dao/jet_reader/stream_writer.h"

#include <string>

namespace tolvek::jet {

std::int64_t wholeNumber(const Field& field); // Null is 0
// The name of a table, in UTF-8.
std::string nameText(JetFile& file, const Field& field);

ColumnType columnType(const MdbColumn& column);
std::uint32_t sizeInCharacters(const JetFile& file, const MdbColumn& column);
void tellValue(JetFile& file, const MdbColumn& column, const Field& field, StreamWriter& to);

}
