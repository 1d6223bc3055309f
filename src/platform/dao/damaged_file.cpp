#include "platform/dao/damaged_file.h"

#include "platform/runtime/codepage932.h"

#include <algorithm>
#include <optional>

namespace tolvek {

namespace {

constexpr std::size_t kHeadSize = 100;
constexpr std::string_view kMagic("SQLite format 3\0", 16);
// The first byte of a page. The other kinds are inner pages and pages of indexes.
constexpr char kTableLeaf = 0x0D;
constexpr std::string_view kOtherPages("\x02\x05\x0A", 3);
constexpr std::size_t kLeafHead = 8;

std::uint32_t byteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

std::uint32_t number(std::string_view bytes, std::size_t at, int size)
{
    std::uint32_t value = 0;
    for (int i = 0; i < size; ++i)
        value = value << 8 | byteAt(bytes, at + static_cast<std::size_t>(i));
    return value;
}

// A number of the format's variable-length encoding; advances `at` past it. None when
// the bytes end within it.
std::optional<std::uint64_t> variable(std::string_view bytes, std::size_t& at)
{
    std::uint64_t value = 0;
    for (int i = 0; i < 9; ++i) {
        if (at >= bytes.size()) return std::nullopt;
        const std::uint32_t byte = byteAt(bytes, at++);
        if (i == 8) return value << 8 | byte;
        value = value << 7 | (byte & 0x7F);
        if ((byte & 0x80) == 0) return value;
    }
    return value;
}

// The size of a value by its type in the record's header. 1 to 6 are integers, 7 is a
// real, 8 and 9 are the constants 0 and 1, even numbers from 12 blobs, odd ones texts.
std::uint64_t sizeOf(std::uint64_t type)
{
    constexpr std::uint64_t kSizes[] = {0, 1, 2, 3, 4, 6, 8, 8, 0, 0, 0, 0};
    return type < 12 ? kSizes[type] : (type - 12) / 2;
}

bool isWholeNumber(std::uint64_t type)
{
    return (type >= 1 && type <= 6) || type == 8 || type == 9;
}

// Texts are in UTF-16, so their size is even.
bool isText(std::uint64_t type)
{
    return type >= 13 && type % 2 == 1 && sizeOf(type) % 2 == 0;
}

bool isNull(std::uint64_t type)
{
    return type == 0;
}

bool canHold(DataType column, std::uint64_t type)
{
    if (isNull(type)) return true;
    return column == dbText || column == dbMemo ? isText(type) : isWholeNumber(type);
}

// Big-endian two's complement of any size, or the constants 0 and 1.
std::int64_t wholeNumber(std::uint64_t type, std::string_view bytes)
{
    if (type >= 8) return static_cast<std::int64_t>(type - 8);
    std::uint64_t value = byteAt(bytes, 0) & 0x80 ? ~std::uint64_t{0} : 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return static_cast<std::int64_t>(value);
}

Text wideText(std::string_view bytes)
{
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<char16_t>(byteAt(bytes, i) | byteAt(bytes, i + 1) << 8);
    return text;
}

// A number that is incomplete becomes Null; of a text the part that is there is kept.
SalvagedValue value(std::uint64_t type, std::string_view stored, std::size_t size)
{
    if (isText(type)) return wideText(stored);
    if (isNull(type) || stored.size() < size) return {};
    return wholeNumber(type, stored);
}

bool looksSound(const Text& text)
{
    return text.find(u'\0') == Text::npos && fitsAnsi(text);
}

}

DamagedFile::DamagedFile(const std::filesystem::path& path, std::vector<Columns> tables)
    : file_(path, OpenFile::Mode::Read), tables_(std::move(tables))
{
    readHead();
    pages_ = static_cast<Number>((std::filesystem::file_size(path) + size_ - 1) / size_);
    free_.resize(pages_ + std::size_t{1});
    if (hasHead_) readFreePages();
    countOwners();
}

// If the first page is corrupt, the default sizes are kept.
void DamagedFile::readHead()
{
    std::string head(kHeadSize, '\0');
    file_.readAt(0, head.data(), head.size());
    if (!head.starts_with(kMagic)) return;
    const std::size_t size = number(head, 16, 2) == 1 ? 65536 : number(head, 16, 2);
    const std::size_t reserved = byteAt(head, 20);
    if (size < 512 || (size & (size - 1)) != 0 || size - reserved < 480) return;
    hasHead_ = true;
    size_ = size;
    usable_ = size - reserved;
}

// Bytes beyond the end of the file are read as 0.
DamagedFile::Page DamagedFile::page(Number number)
{
    Page bytes(size_, '\0');
    file_.readAt((number - std::uint64_t{1}) * size_, bytes.data(), bytes.size());
    return bytes;
}

// The list is used as a whole or not at all: a corrupt one may name pages in use.
void DamagedFile::readFreePages()
{
    const Page head = page(1);
    std::vector<Number> found;
    if (!addFreePages(number(head, 32, 4), found) || found.size() != number(head, 36, 4)) return;
    for (const Number free : found)
        free_[free] = true;
}

bool DamagedFile::addFreePages(Number trunk, std::vector<Number>& found)
{
    const auto add = [&](Number free) {
        if (free < 2 || !isPage(free) || found.size() > pages_) return false;
        found.push_back(free);
        return true;
    };
    while (trunk != 0) {
        if (!add(trunk)) return false;
        const Page list = page(trunk);
        const std::size_t leaves = number(list, 4, 4);
        if (leaves > usable_ / 4 - 2) return false;
        for (std::size_t i = 0; i < leaves; ++i)
            if (!add(number(list, 8 + 4 * i, 4))) return false;
        trunk = number(list, 0, 4);
    }
    return true;
}

void DamagedFile::eachRow(const Take& take)
{
    eachCell([&](const Cell& cell) { take(cell.table, row(cell)); });
}

void DamagedFile::eachCell(const Visit& visit)
{
    for (Number n = 1; n <= pages_; ++n)
        if (!free_[n]) visitPage(n, visit);
}

// The first byte gives the kind of a page. An overflow page begins with 0, and so does
// a page with a zeroed header. Overflow pages in use aren't searched: after their text
// they hold remains of deleted or moved rows.
void DamagedFile::visitPage(Number n, const Visit& visit)
{
    const Page bytes = page(n);
    const std::size_t start = n == 1 ? kHeadSize : 0;
    if (bytes[start] == kTableLeaf && visitListed(bytes, start, visit)) return;
    const bool isOther = kOtherPages.find(bytes[start]) != std::string_view::npos;
    if (!isOther && owners_[n] == 0) search(bytes, visit);
}

// Visits the rows by the page's own list. False, with nothing visited, if that list is
// corrupt.
bool DamagedFile::visitListed(const Page& page, std::size_t start, const Visit& visit)
{
    const std::size_t count = number(page, start + 3, 2), list = start + kLeafHead;
    if (list + 2 * count > usable_) return false;
    std::vector<Cell> cells(count);
    for (std::size_t i = 0; i < count; ++i)
        if (!parse(page, number(page, list + 2 * i, 2), cells[i])) return false;
    for (const Cell& cell : cells)
        visitIfOfATable(cell, visit);
    return true;
}

// A row may begin at any byte, except one that is 0: that would be an empty record.
void DamagedFile::search(const Page& page, const Visit& visit)
{
    Cell cell;
    for (std::size_t at = 0; at < usable_; ++at)
        if (page[at] != 0 && parse(page, at, cell)) visitIfOfATable(cell, visit);
}

void DamagedFile::visitIfOfATable(const Cell& cell, const Visit& visit) const
{
    if (cell.table < tables_.size()) visit(cell);
}

std::size_t DamagedFile::tableOf(const std::vector<std::uint64_t>& types) const
{
    const auto fits = [&](const Columns& columns) {
        return std::equal(
            types.begin(), types.end(), columns.begin(), columns.end(),
            [](std::uint64_t type, DataType column) { return canHold(column, type); });
    };
    return static_cast<std::size_t>(std::find_if(tables_.begin(), tables_.end(), fits) -
                                    tables_.begin());
}

// How much of a record is on its leaf page; the rest is on overflow pages. The numbers
// are those of the file format.
std::size_t DamagedFile::localSize(std::uint64_t size) const
{
    const std::size_t most = usable_ - 35, least = (usable_ - 12) * 32 / 255 - 23;
    if (size <= most) return static_cast<std::size_t>(size);
    const std::size_t wanted = least + static_cast<std::size_t>((size - least) % (usable_ - 4));
    return wanted <= most ? wanted : least;
}

// Parses a row of any table at that place. False if there is none.
bool DamagedFile::parse(const Page& page, std::size_t at, Cell& cell) const
{
    const std::string_view bytes(page.data(), usable_);
    const auto size = variable(bytes, at);
    if (!size || *size == 0 || *size > std::uint64_t{pages_} * size_) return false;
    const auto rowid = variable(bytes, at);
    const std::size_t local = localSize(*size);
    const bool overflows = local < *size;
    if (!rowid || *rowid == 0 || at + local + (overflows ? 4 : 0) > usable_) return false;
    cell.rowid = static_cast<std::int64_t>(*rowid);
    cell.size = *size;
    cell.local = bytes.substr(at, local);
    cell.overflow = overflows ? number(bytes, at + local, 4) : 0;
    return parseTypes(cell);
}

// The types 10 and 11 are reserved and never written. Header and values must fill the
// record exactly.
bool DamagedFile::parseTypes(Cell& cell) const
{
    std::size_t place = 0;
    const auto head = variable(cell.local, place);
    if (!head || *head > cell.local.size() || *head < place) return false;
    cell.head = static_cast<std::size_t>(*head);
    cell.types.clear();
    std::uint64_t sum = cell.head;
    while (place < cell.head) {
        const auto type = variable(cell.local, place);
        if (!type || *type == 10 || *type == 11) return false;
        cell.types.push_back(*type);
        sum += sizeOf(*type);
        if (sum > cell.size) return false;
    }
    cell.table = tableOf(cell.types);
    return place == cell.head && sum == cell.size;
}

// The overflow pages of the row, up to the point where the chain breaks.
std::vector<DamagedFile::Number> DamagedFile::chain(const Cell& cell)
{
    std::vector<Number> numbers;
    Number next = cell.overflow;
    for (std::uint64_t have = cell.local.size(); have < cell.size; have += usable_ - 4) {
        if (next < 2 || !isPage(next)) break;
        numbers.push_back(next);
        std::string head(4, '\0');
        file_.readAt((next - std::uint64_t{1}) * size_, head.data(), head.size());
        next = number(head, 0, 4);
    }
    return numbers;
}

void DamagedFile::countOwners()
{
    owners_.assign(pages_ + std::size_t{1}, 0);
    eachCell([this](const Cell& cell) {
        for (const Number n : chain(cell))
            owners_[n] = static_cast<std::uint8_t>(std::min(owners_[n] + 1, 2));
    });
}

// The record is shorter than announced if the chain breaks. A page that two rows use,
// or that is free, belongs to at most one row, so the row isn't whole.
std::string DamagedFile::record(const Cell& cell, bool& whole)
{
    std::string bytes(cell.local);
    Number next = 0;
    for (const Number n : chain(cell)) {
        const Page content = page(n);
        next = number(content, 0, 4);
        if (owners_[n] > 1 || free_[n]) whole = false;
        const std::uint64_t wanted = cell.size - bytes.size();
        bytes.append(content, 4,
                     static_cast<std::size_t>(std::min<std::uint64_t>(wanted, usable_ - 4)));
    }
    if (bytes.size() < cell.size || next != 0) whole = false;
    return bytes;
}

SalvagedRow DamagedFile::row(const Cell& cell)
{
    SalvagedRow row;
    row.rowid = cell.rowid;
    const std::string bytes = record(cell, row.whole);
    std::size_t at = cell.head;
    for (const std::uint64_t type : cell.types) {
        const std::size_t size = static_cast<std::size_t>(sizeOf(type));
        const auto stored = std::string_view(bytes).substr(std::min(at, bytes.size()), size);
        row.values.push_back(value(type, stored, size));
        const Text* text = std::get_if<Text>(&row.values.back());
        if (text && !looksSound(*text)) row.whole = false;
        at += size;
    }
    return row;
}

}
