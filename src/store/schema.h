// The definitions of the six tables, as data.
#pragma once
#include "platform/dao/dao.h"

#include <initializer_list>
#include <vector>

namespace tolvek {

struct FieldSpec {
    Text name;
    DataType type;
    int size = 0;            // characters, texts only
    bool zeroLength = false; // whether an empty text may be stored
    Text defaultValue{};     // "\"\"" is the empty text
};

struct IndexSpec {
    Text name;
    std::vector<Text> fields;
};

struct TableSpec {
    Text name;
    std::vector<FieldSpec> fields;
    std::vector<Text> key;          // of the primary index, named as the table
    std::vector<IndexSpec> lookups; // further indexes, only for speed
};

// The number of memo fields that hold a mail's text.
inline constexpr int kMailBlocks = 16;

TableSpec tblTolvekSpec();
TableSpec tblSearch_AddressesSpec();
TableSpec tblSearch_NameSpec();
TableSpec tblFriendSpec();
TableSpec tblFilterSpec();
TableSpec tblFilterDataSpec();
std::vector<TableSpec> allTableSpecs(); // in the order of creation

// The engine's definition: fields, primary index, lookups.
TableDef tableDefinition(const TableSpec& spec);

// The table up to version 2.10: without what came to it later.
TableSpec olderForm(TableSpec spec);
// As the engine compares names of tables and fields.
bool isSameName(TextView a, TextView b);
// Exactly the fields of `spec` with their types, in any order.
bool isMade(const TableDef& table, const TableSpec& spec);

}
