// The format in which the reader of Jet files sends its result to the program. An item
// is a byte with its kind, its length in four bytes (little-endian) and that many bytes.
// The order is
//
//   Hello { Table Column+ { Value+ } } End
//
// with one value per column in each row. Values are sent as they are in the file: texts
// in the file's own encoding, and no rules applied.
#pragma once
#include <string_view>

namespace tolvek::jet {

enum class Item : char {
    Hello = 'H',  // kHello; sent before the file is read
    Table = 'T',  // its name, UTF-8
    Column = 'C', // a byte with the type, four with the size in characters, the name in UTF-8
    Null = 'N',
    False = '0',
    True = '1',
    Number = 'I', // eight bytes, little-endian
    Wide = 'W',   // a text, UTF-16LE
    Ansi = 'A',   // a text, code page 932
    Bytes = 'B',  // a value of a type that the program lacks
    End = 'E',    // everything has been sent
};

enum class ColumnType : char { YesNo = 1, Integer = 3, Long = 4, Text = 10, Memo = 12, Other = 0 };

inline constexpr std::string_view kHello = "TolvekJet 1";

// The reader's exit codes. After a Hello any other end counts as kDamaged too.
// kNotUnderstood means that the reader doesn't know the format; the file may be sound.
inline constexpr int kWhole = 0, kDamaged = 2, kNoInput = 3, kNotUnderstood = 4;

}
