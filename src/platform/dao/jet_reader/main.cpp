// Reads the Jet file on its standard input and tells its tables on descriptor 3
// (see stream_format.h). A program of its own, because a damaged file may do
// anything to the library: crash it, hang it, eat all memory.
#include "platform/dao/jet_reader/complaints.h"
#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/values.h"

#include <cstdlib>

namespace tolvek::jet {

namespace {

constexpr int kResult = 3;
constexpr const char* kInput = "/dev/stdin";

// The library takes its options from here, and nowhere else the code page of
// the names in a Jet 3 file, whose own statement of it can't be relied on.
void settleEnvironment()
{
    setenv("MDB_JET3_CHARSET", "CP932", 1);
    for (const char* option : {"MDBICONV", "MDBOPTS", "MDBPATH"})
        unsetenv(option);
}

void tellTable(JetFile& file, const JetFile::Entry& entry, StreamWriter& to)
{
    JetTable table(file, entry);
    to.item(Item::Table, entry.name);
    for (const MdbColumn* column : table.columns())
        to.column(columnType(*column), sizeInCharacters(file, *column), column->name);
    table.eachRow([&](const Row& row) {
        for (std::size_t i = 0; i < row.size(); ++i)
            tellValue(file, *table.columns()[i], row[i], to);
    });
}

void tellFile(StreamWriter& to)
{
    const Complaints complaints;
    JetFile file(kInput);
    for (const JetFile::Entry& entry : file.userTables()) {
        tellTable(file, entry, to);
        require(!complaints.any(), "the library complains");
    }
    require(!complaints.any(), "the library complains");
    to.item(Item::End);
    to.flush();
}

bool canReadInput()
{
    std::FILE* input = std::fopen(kInput, "rb");
    if (input) std::fclose(input);
    return input != nullptr;
}

int run()
{
    settleEnvironment();
    StreamWriter result(kResult);
    result.item(Item::Hello, kHello);
    result.flush();
    if (!canReadInput()) return kNoInput;
    try {
        tellFile(result);
        return kWhole;
    } catch (const std::exception&) { // memory that ran out, too
        return kDamaged;
    }
}

}

}

int main()
{
    // Without the exit handlers: what they look after ends with the process.
    std::_Exit(tolvek::jet::run());
}
