// Reads the Jet file on standard input and writes its tables to descriptor 3 (see
// stream_format.h). It is a separate program because a corrupt or malicious file may do
// anything to the library: crash it, hang it, exhaust memory, or take control of it. So
// the process can't open anything any more when it first reads the file.
#include "platform/dao/jet_reader/damage.h"
#include "platform/dao/jet_reader/values.h"
#include "platform/system/captured_errors.h"
#include "platform/system/child_start.h"
#include "platform/system/lock_down.h"

#include <cstdlib>
#include <iconv.h>

namespace tolvek::jet {

namespace {

constexpr int kResult = 3;
constexpr const char* kAnsi = "CP932";
const auto kNoConversion = reinterpret_cast<iconv_t>(-1);

// The library takes its options from the environment. That is also the only way to set
// the code page of names in a Jet 3 file; the code page in the file's header isn't
// reliable.
void settleEnvironment()
{
    setOnlyVariable("MDB_JET3_CHARSET", kAnsi);
}

// The conversion tables are files, which can't be opened once the process is locked down.
// Tables that have been opened once stay in memory, so these converters are never closed.
void loadConversions()
{
    for (const char* stored : {kAnsi, "UCS-2LE"})
        if (iconv_open("UTF-8", stored) == kNoConversion ||
            iconv_open(stored, "UTF-8") == kNoConversion)
            std::abort(); // before the Hello, so this isn't blamed on the file
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

// The library reports some kinds of corruption only on standard error, so any output
// there counts as Damage.
void writeFile(const MappedInput& input, const CapturedErrors& complaints, StreamWriter& to)
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

int exitCodeOf(const MappedInput& input, const CapturedErrors& complaints, StreamWriter& to)
{
    if (!input.isReadable()) return kNoInput;
    try {
        writeFile(input, complaints, to);
        return kWhole;
    } catch (const NotUnderstood&) {
        return kNotUnderstood;
    } catch (const std::exception&) { // Damage, or out of memory
        return kDamaged;
    }
}

// Everything that needs opening is opened before the lock-down, and the file's content
// is read only after it.
int run()
{
    showCrashes();
    settleEnvironment();
    loadConversions();
    const MappedInput input;
    const CapturedErrors complaints;
    StreamWriter result(kResult);
    lockDown();
    result.item(Item::Hello, kHello);
    result.flush();
    return exitCodeOf(input, complaints, result);
}

}

}

int main()
{
    // Without exit handlers, which have nothing to do here that the end of the process
    // doesn't do.
    std::_Exit(tolvek::jet::run());
}
