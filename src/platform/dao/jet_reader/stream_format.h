// What the reader of Jet files tells the program, on the descriptor of its
// result: items of a kind, a length of four bytes (lowest first) and that many
// bytes. The order is
//
//   Hello { Table Column+ { Value+ } } End
//
// with as many values to a row as the table has columns. Everything is told as
// it stands in the file: texts in the file's own encoding, no rule applied.
#pragma once
#include <string_view>

namespace tolvek::jet {

enum class Item : char {
    Hello = 'H',  // kHello; before the file is touched
    Table = 'T',  // its name, UTF-8
    Column = 'C', // a byte with the type, four with the size in characters, the name in UTF-8
    Null = 'N',
    False = '0',
    True = '1',
    Number = 'I', // eight bytes, lowest first
    Wide = 'W',   // a text, UTF-16LE
    Ansi = 'A',   // a text, code page 932
    Bytes = 'B',  // of a type that the program has none for
    End = 'E',    // nothing is missing
};

enum class ColumnType : char { YesNo = 1, Integer = 3, Long = 4, Text = 10, Memo = 12, Other = 0 };

inline constexpr std::string_view kHello = "TolvekJet 1";

// The reader's exit codes. Anything else that follows a Hello is damage, too;
// kNotUnderstood isn't: the file may be sound, of a form that the reader doesn't know.
inline constexpr int kWhole = 0, kDamaged = 2, kNoInput = 3, kNotUnderstood = 4;

}
