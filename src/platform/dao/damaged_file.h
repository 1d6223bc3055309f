// Reads the rows that can still be read in a corrupt database file, page by page.
//
// Nothing except the rows themselves is trusted: no schema, no inner page of a tree,
// no index. A row is recognised by its format, which is strict: the number of columns,
// a possible type for each column, and lengths that add up. So the rows of every leaf
// page are found, even if no inner page leads there, and a page with a corrupt header
// is searched byte by byte. Pages that the file lists as free are skipped: deleted rows
// stay deleted.
//
// The file is only read. Failures are those of the disk (std::system_error).
#pragma once
#include "platform/dao/dao.h"
#include "platform/system/files.h"

#include <variant>

namespace tolvek {

using SalvagedValue = std::variant<std::monostate, std::int64_t, Text>; // monostate is Null

struct SalvagedRow {
    std::int64_t rowid = 0;
    std::vector<SalvagedValue> values;
    // False if a part is missing (it is then empty), or if a text holds a character that
    // no mail has: U+0000, or one outside code page 932.
    bool whole = true;
};

class DamagedFile {
public:
    using Columns = std::vector<DataType>;
    using Take = std::function<void(std::size_t table, const SalvagedRow&)>;

    // The tables must differ in the types of their columns, by which rows are assigned.
    DamagedFile(const std::filesystem::path& path, std::vector<Columns> tables);
    // Visits the rows in the order of the pages. A row may be visited more than once.
    void eachRow(const Take& take);

private:
    using Page = std::string;
    using Number = std::uint32_t; // of a page, from 1
    struct Cell {
        std::int64_t rowid = 0;
        std::uint64_t size = 0;           // of the record
        std::string_view local;           // the part of the record on this page
        std::vector<std::uint64_t> types; // of its columns
        std::size_t head = 0;             // size of the record's header, before the values
        Number overflow = 0;              // first overflow page; 0: all is on this page
        std::size_t table = 0;            // index of its table; the number of tables: none
    };
    using Visit = std::function<void(const Cell&)>;

    void readHead();
    void readFreePages();
    bool addFreePages(Number trunk, std::vector<Number>& pages);
    bool isPage(Number number) const { return number >= 1 && number <= pages_; }
    Page page(Number number);
    void eachCell(const Visit& visit);
    void visitPage(Number number, const Visit& visit);
    bool visitListed(const Page& page, std::size_t start, const Visit& visit);
    void search(const Page& page, const Visit& visit);
    bool parse(const Page& page, std::size_t at, Cell& cell) const;
    bool parseTypes(Cell& cell) const;
    std::size_t localSize(std::uint64_t size) const;
    std::size_t tableOf(const std::vector<std::uint64_t>& types) const;
    void visitIfOfATable(const Cell& cell, const Visit& visit) const;
    std::vector<Number> chain(const Cell& cell);
    std::string record(const Cell& cell, bool& whole);
    SalvagedRow row(const Cell& cell);
    void countOwners();

    OpenFile file_;
    std::size_t size_ = 4096, usable_ = 4096; // of a page; this program writes no others
    Number pages_ = 0;
    bool hasHead_ = false;
    std::vector<bool> free_;
    std::vector<std::uint8_t> owners_; // the number of rows that use an overflow page, up to 2
    std::vector<Columns> tables_;
};

}
