// Measures how many changed bytes of a Jet file go unnoticed: each byte of a kind of
// place takes four other values, one at a time.
//
//   tolvek_jet_bytes FILE definitions|columns|slots|catalog [STRIDE] [FIRST]
//
// Prints a line for each change that gave other rows without an error, and the totals.
// FILE is a name in tests/data/jet; every STRIDE-th place is changed, beginning with
// FIRST.
#include "store/archive_tables.h"
#include "support/changed_jet.h"

#include <cstdio>
#include <string_view>

namespace tolvek::test {
namespace {

constexpr std::size_t kPage = 4096;     // Jet 4
constexpr std::size_t kCatalogPage = 2; // the catalog's definition
constexpr std::size_t kColumnsAt = 63, kIndexSize = 12, kColumnSize = 25;

class Places {
public:
    explicit Places(const std::string& bytes) : bytes_(bytes) {}

    std::vector<std::size_t> of(std::string_view kind) const
    {
        std::vector<std::size_t> places;
        const auto add = [&](std::size_t from, std::size_t size) {
            for (std::size_t i = 0; i < size; ++i)
                places.push_back(from + i);
        };
        for (std::size_t page = 0; page < bytes_.size(); page += kPage) {
            if (kind == "definitions" && isUserTable(page)) add(page, 8 + number(page + 8, 4));
            if (kind == "columns" && isMailTable(page))
                add(page + kColumnsAt + kIndexSize * number(page + 51, 4),
                    kColumnSize * number(page + 45, 2));
            if (!isData(page)) continue;
            const std::size_t owner = number(page + 4, 4), rows = number(page + 12, 2);
            if (kind == "slots" && isUserTable(owner * kPage)) add(page + 12, 2 + 2 * rows);
            if (kind == "catalog" && owner == kCatalogPage) addRows(page, rows, add);
        }
        return places;
    }

private:
    std::size_t number(std::size_t at, std::size_t size) const
    {
        std::size_t value = 0;
        for (std::size_t i = size; i > 0; --i)
            value = value << 8 | static_cast<unsigned char>(bytes_[at + i - 1]);
        return value;
    }
    bool isUserTable(std::size_t page) const
    {
        return page + kPage <= bytes_.size() && bytes_[page] == 2 && bytes_[page + 40] == 'N';
    }
    bool isMailTable(std::size_t page) const
    {
        return isUserTable(page) && number(page + 45, 2) >= 20;
    }
    bool isData(std::size_t page) const { return bytes_[page] == 1; }
    template <class Add> void addRows(std::size_t page, std::size_t rows, const Add& add) const
    {
        add(page + 12, 2 + 2 * rows);
        const std::size_t first = rows ? number(page + 12 + 2 * rows, 2) & 0x1FFF : kPage;
        add(page + first, kPage - first);
    }

    const std::string& bytes_;
};

struct Sums {
    int changes = 0, refused = 0, same = 0, other = 0;
};

void tryPlace(const ChangedJet& file, std::size_t at, Sums& sums)
{
    const auto old = static_cast<unsigned char>(file.bytes()[at]);
    for (const int value : {old ^ 0x01, old ^ 0x80, 0x00, 0xFF}) {
        if (value == old) continue;
        ++sums.changes;
        switch (file.with({at, static_cast<unsigned char>(value)})) {
        case ChangedJet::Outcome::Refused:
            ++sums.refused;
            break;
        case ChangedJet::Outcome::SameRows:
            ++sums.same;
            break;
        case ChangedJet::Outcome::OtherRows:
            ++sums.other;
            std::printf("%zu\t%d\t(page %zu + %zu, was %d)\n", at, value, at / kPage, at % kPage,
                        old);
        }
    }
}

}
}

int main(int count, char** words)
{
    using namespace tolvek::test;
    if (count < 3) return 2;
    tolvek::registerArchiveTables();
    const ChangedJet file(words[1]);
    const std::size_t stride = count > 3 ? std::stoul(words[3]) : 1;
    const auto places = Places(file.bytes()).of(words[2]);
    Sums sums;
    for (std::size_t i = count > 4 ? std::stoul(words[4]) : 0; i < places.size(); i += stride)
        tryPlace(file, places[i], sums);
    std::printf("%s, %s: %d changes, %d refused, %d read as before, %d other rows\n", words[1],
                words[2], sums.changes, sums.refused, sums.same, sums.other);
}
