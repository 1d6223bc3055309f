// Reads the Jet file on its standard input and tells its tables on descriptor 3
// (see stream_format.h). A program of its own, because a damaged file may do
// anything to the library: crash it, hang it, eat all memory, or turn it against
// its user. So the process can open nothing any more when it first looks at it.
#include "platform/system/captured_errors.h"
#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/values.h"
#include "platform/system/lock_down.h"

#include <cstdlib>
#include <iconv.h>

namespace tolvek::jet {

namespace {

constexpr int kResult = 3;
constexpr const char* kAnsi = "CP932";
const auto kNoConversion = reinterpret_cast<iconv_t>(-1);

// The library takes its options from here, and nowhere else the code page of
// the names in a Jet 3 file, whose own statement of it can't be relied on.
void settleEnvironment()
{
    clearenv();
    setenv("MDB_JET3_CHARSET", kAnsi, 1);
}

// What the library converts by lies in files, which can't be opened any more
// once the process is locked. What was opened once stays in memory: these are
// never closed.
void loadConversions()
{
    for (const char* stored : {kAnsi, "UCS-2LE"})
        if (iconv_open("UTF-8", stored) == kNoConversion ||
            iconv_open(stored, "UTF-8") == kNoConversion)
            std::abort(); // before the Hello: says nothing about the file
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

void tellFile(const MappedInput& input, const CapturedErrors& complaints, StreamWriter& to)
{
    JetFile file(input);
    for (const JetFile::Entry& entry : file.userTables()) {
        tellTable(file, entry, to);
        require(!complaints.any(), "the library complains");
    }
    require(!complaints.any(), "the library complains");
    to.item(Item::End);
    to.flush();
}

int told(const MappedInput& input, const CapturedErrors& complaints, StreamWriter& to)
{
    if (!input.isReadable()) return kNoInput;
    try {
        tellFile(input, complaints, to);
        return kWhole;
    } catch (const NotUnderstood&) {
        return kNotUnderstood;
    } catch (const std::exception&) { // memory that ran out, too
        return kDamaged;
    }
}

// Everything that has to be opened is open before the first look at the file.
int run()
{
    settleEnvironment();
    loadConversions();
    const MappedInput input;
    const CapturedErrors complaints;
    StreamWriter result(kResult);
    lockDown();
    result.item(Item::Hello, kHello);
    result.flush();
    return told(input, complaints, result);
}

}

}

int main()
{
    // Without the exit handlers: what they look after ends with the process.
    std::_Exit(tolvek::jet::run());
}
