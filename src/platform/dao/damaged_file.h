// The rows that can still be read in a damaged database file, page by page.
//
// Nothing but the rows themselves is relied on: neither the schema nor the
// inner pages of a tree nor an index. A row is recognised by its form, which is
// strict: the number of its columns, a type in each that the column can have,
// and lengths that add up. So every leaf page gives its rows, reachable or not,
// and a page whose own head is damaged is searched byte by byte. Pages that the
// file lists as free are left out: what was deleted stays deleted.
//
// The file is only read. Failures are those of the disk (std::system_error).
#pragma once
#include "platform/dao/dao.h"
#include "platform/system/files.h"

#include <variant>

namespace tolvek {

using SalvagedValue = std::variant<std::monostate, std::int64_t, Text>; // nothing is Null

struct SalvagedRow {
    std::int64_t rowid = 0;
    std::vector<SalvagedValue> values;
    // False where a part is missing (empty then), and where a text holds what no
    // mail has: U+0000, or a character outside code page 932.
    bool whole = true;
};

class DamagedFile {
public:
    using Columns = std::vector<DataType>;
    using Take = std::function<void(std::size_t table, const SalvagedRow&)>;

    // The tables differ in their columns' types.
    DamagedFile(const std::filesystem::path& path, std::vector<Columns> tables);
    // Each row, in the order of the pages. The same row may come more than once.
    void eachRow(const Take& take);

private:
    using Page = std::string;
    using Number = std::uint32_t; // of a page, from 1
    struct Cell {
        std::int64_t rowid = 0;
        std::uint64_t size = 0;           // of the record
        std::string_view local;           // its part on the page
        std::vector<std::uint64_t> types; // of its columns
        std::size_t head = 0;             // of the record, before the values
        Number overflow = 0;              // 0: all of it is on the page
        std::size_t table = 0;            // beyond the last one: of none of them
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
    std::size_t size_ = 4096, usable_ = 4096; // of a page; this program makes no others
    Number pages_ = 0;
    bool hasHead_ = false;
    std::vector<bool> free_;
    std::vector<std::uint8_t> owners_; // rows that lead to an overflow page, at most 2
    std::vector<Columns> tables_;
};

}
