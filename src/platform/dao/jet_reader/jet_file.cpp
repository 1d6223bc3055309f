#include "platform/dao/jet_reader/jet_file.h"

#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/values.h"

#include <algorithm>

namespace tolvek::jet {

namespace {

constexpr unsigned long kCatalogPage = 2;         // in every Jet file
constexpr int kObjectKind = 0x7F;                 // mask of the catalog's Type
constexpr std::int64_t kPageNumber = 0xFFFFFF;    // mask of the catalog's Id
constexpr std::int64_t kSystemFlags = 0x80000002; // of the catalog's Flags

bool isSystemName(const std::string& name)
{
    return name.size() >= 4 && g_ascii_strcasecmp(name.substr(0, 4).c_str(), "MSys") == 0;
}

// Two entries of the catalog that lead to one definition would give its rows twice.
void requireDistinctPages(std::vector<JetFile::Entry> tables)
{
    const auto page = &JetFile::Entry::page;
    std::ranges::sort(tables, {}, page);
    require(std::ranges::adjacent_find(tables, {}, page) == tables.end(),
            "two tables of one definition");
}

}

JetFile::JetFile(const MappedInput& input)
    : handle_(mdb_open_buffer(input.bytes(), input.size(), MDB_NOFLAGS), mdb_close),
      size_(input.size())
{
    if (!handle_) throw NotUnderstood("refused by the library");
}

std::vector<JetFile::Entry> JetFile::userTables()
{
    JetTable catalog(*this, {"MSysObjects", kCatalogPage});
    const std::size_t id = catalog.position("Id", MDB_LONGINT),
                      name = catalog.position("Name", MDB_TEXT),
                      type = catalog.position("Type", MDB_INT),
                      flags = catalog.position("Flags", MDB_LONGINT);
    std::vector<Entry> tables;
    catalog.eachRow([&](const Row& row) {
        require(!row[id].isNull && !row[name].isNull && !row[type].isNull, "a nameless object");
        const bool isTable = (wholeNumber(row[type]) & kObjectKind) == MDB_TABLE;
        if (!isTable || (wholeNumber(row[flags]) & kSystemFlags) != 0) return;
        const std::string found = nameText(*this, row[name]);
        if (isSystemName(found)) return;
        tables.push_back({found, static_cast<unsigned long>(wholeNumber(row[id]) & kPageNumber)});
    });
    requireDistinctPages(tables);
    return tables;
}

}
