// A Jet file and its tables. Only the safest functions of the library are used. Its
// functions for the catalog and for bound columns aren't: on a corrupt file they crash
// or hang, and they return Null like an empty text.
//
// Throws Damage for everything that isn't sound.
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
    explicit JetFile(const MappedInput& input); // NotUnderstood if the library refuses it

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

// A field of a row. The bytes are in the handle's page buffer and valid until the next
// row is read.
struct Field {
    bool isNull;
    std::string_view bytes;
};
using Row = std::vector<Field>;

class JetTable {
public:
    JetTable(JetFile& file, const JetFile::Entry& entry);

    const std::vector<MdbColumn*>& columns() const { return columns_; }
    // The position of a column. Damage if it is missing or of another type.
    std::size_t position(const std::string& column, int type) const;
    // Visits every row. Damage if there are fewer rows than the table announces.
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
    Places moved_; // the new places of rows that outgrew their old ones, sorted
};

}
