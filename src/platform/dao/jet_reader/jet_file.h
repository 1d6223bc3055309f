// A Jet file and its tables, through the library's surest functions alone: no
// reading of the catalog or of bound columns, in which a damaged file crashes
// or hangs the library, or loses the difference between no text and an empty one.
//
// Everything that isn't sound is Damage.
#pragma once
#include "platform/system/mapped_input.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <mdbtools.h>

namespace tolvek::jet {

class JetFile {
public:
    explicit JetFile(const MappedInput& input); // of a form the library refuses: NotUnderstood

    struct Entry {
        std::string name;
        unsigned long page;
    };
    std::vector<Entry> userTables();

    MdbHandle& handle() { return *handle_; }
    bool hasAnsiTexts() const { return handle_->f->jet_version == MDB_VER_JET3; }
    std::uint64_t size() const { return size_; }

private:
    std::unique_ptr<MdbHandle, void (*)(MdbHandle*)> handle_;
    std::uint64_t size_;
};

// A row's field; the bytes lie in the handle's page and are good until the next row.
struct Field {
    bool isNull;
    std::string_view bytes;
};
using Row = std::vector<Field>;

class JetTable {
public:
    JetTable(JetFile& file, const JetFile::Entry& entry);

    const std::vector<MdbColumn*>& columns() const { return columns_; }
    // The position of a column; one that is missing or of another type is Damage.
    std::size_t position(const std::string& column, int type) const;
    // Every row that the table announces, or Damage.
    void eachRow(const std::function<void(const Row&)>& visit);

private:
    struct Slot {
        int number, start, size, flags;
    };
    using Places = std::vector<std::uint32_t>;
    void readColumns();
    int announcedColumns() const;
    void eachPage(const std::function<void()>& visit);
    void eachSlot(const std::function<void(const Slot&)>& visit);
    Slot slot(int number) const;
    bool isSuperseded(const Slot& slot) const;
    void findMovedRows();
    Row crackedRow(const Slot& slot) const;
    bool isMarked(int marks, int number) const;
    void requireOwnBytes(const Row& row, int end) const;
    std::string_view bytesOf(const MdbField& field) const;

    MdbHandle& handle_;
    MdbCatalogEntry entry_{};
    std::unique_ptr<MdbTableDef, void (*)(MdbTableDef*)> table_;
    std::vector<MdbColumn*> columns_;
    int mostColumns_ = 0;
    Places moved_; // where the rows stand now that outgrew their place, sorted
};

}
