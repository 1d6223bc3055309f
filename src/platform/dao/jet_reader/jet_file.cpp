#include "platform/dao/jet_reader/jet_file.h"

#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/values.h"

#include <filesystem>

namespace tolvek::jet {

namespace {

constexpr unsigned long kCatalogPage = 2;
constexpr int kObjectKind = 0x7F;
constexpr std::int64_t kPageNumber = 0xFFFFFF;
constexpr std::int64_t kSystemFlags = 0x80000002;

bool isSystemName(const std::string& name)
{
    return name.size() >= 4 && g_ascii_strncasecmp(name.c_str(), "MSys", 4) == 0;
}

}

JetFile::JetFile(const std::string& path)
    : handle_(mdb_open(path.c_str(), MDB_NOFLAGS), mdb_close),
      size_(std::filesystem::file_size(path))
{
    require(handle_ != nullptr, "no Jet file");
}

std::vector<JetFile::Entry> JetFile::userTables()
{
    JetTable catalog(*this, {"MSysObjects", kCatalogPage});
    const std::size_t id = catalog.position("Id"), name = catalog.position("Name"),
                      type = catalog.position("Type"), flags = catalog.position("Flags");
    std::vector<Entry> tables;
    catalog.eachRow([&](const Row& row) {
        const bool isTable = (wholeNumber(row[type]) & kObjectKind) == MDB_TABLE;
        if (!isTable || (wholeNumber(row[flags]) & kSystemFlags) != 0) return;
        const std::string found = nameText(*this, row[name]);
        if (isSystemName(found)) return;
        tables.push_back({found, static_cast<unsigned long>(wholeNumber(row[id]) & kPageNumber)});
    });
    return tables;
}

}
