#include "platform/dao/jet_reader/values.h"

#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/memo.h"
#include "platform/dao/jet_reader/wide_text.h"

namespace tolvek::jet {

namespace {

void tellText(const JetFile& file, std::string_view stored, StreamWriter& to)
{
    if (file.hasAnsiTexts())
        to.item(Item::Ansi, stored);
    else
        to.item(Item::Wide, wideText(stored));
}

std::size_t bytesOfNumber(int type)
{
    if (type == MDB_BYTE) return 1;
    return type == MDB_INT ? 2 : 4;
}

}

std::int64_t wholeNumber(const Field& field)
{
    if (field.isNull) return 0;
    std::uint64_t value = 0;
    for (std::size_t i = field.bytes.size(); i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(field.bytes[i - 1]);
    if (field.bytes.size() == 1) return static_cast<std::int64_t>(value); // unsigned in Jet
    if (field.bytes.size() == 2) return static_cast<std::int16_t>(value);
    require(field.bytes.size() == 4, "size of a number");
    return static_cast<std::int32_t>(value);
}

// A character of two bytes has at most three in UTF-8.
std::string nameText(JetFile& file, const Field& field)
{
    std::string name(field.bytes.size() * 3 + 16, '\0');
    const int size = mdb_unicode2ascii(&file.handle(), field.bytes.data(), field.bytes.size(),
                                       name.data(), name.size());
    require(size > 0, "name of a table");
    name.resize(static_cast<std::size_t>(size));
    return name;
}

ColumnType columnType(const MdbColumn& column)
{
    switch (column.col_type) {
    case MDB_BOOL:
        return ColumnType::YesNo;
    case MDB_BYTE:
    case MDB_INT:
        return ColumnType::Integer;
    case MDB_LONGINT:
        return ColumnType::Long;
    case MDB_TEXT:
        return ColumnType::Text;
    case MDB_MEMO:
        return ColumnType::Memo;
    default:
        return ColumnType::Other;
    }
}

// The file gives sizes in bytes; Jet 4 has two per character.
std::uint32_t sizeInCharacters(const JetFile& file, const MdbColumn& column)
{
    const auto size = static_cast<std::uint32_t>(column.col_size);
    return file.hasAnsiTexts() ? size : size / 2;
}

// Jet stores a Yes/No in the mark of the field: the mark for Null means No.
void tellValue(JetFile& file, const MdbColumn& column, const Field& field, StreamWriter& to)
{
    const ColumnType type = columnType(column);
    if (type == ColumnType::YesNo) return to.item(field.isNull ? Item::False : Item::True);
    if (field.isNull) return to.item(Item::Null);
    switch (type) {
    case ColumnType::Text:
        return tellText(file, field.bytes, to);
    case ColumnType::Memo:
        return tellText(file, memoBytes(file, field.bytes), to);
    case ColumnType::Integer:
    case ColumnType::Long:
        require(field.bytes.size() == bytesOfNumber(column.col_type), "size of a number");
        return to.number(wholeNumber(field));
    case ColumnType::YesNo:
    case ColumnType::Other:
        break;
    }
    if (column.col_type == MDB_OLE) return to.item(Item::Bytes, memoBytes(file, field.bytes));
    to.item(Item::Bytes, field.bytes);
}

}
