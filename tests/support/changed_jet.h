// A valid Jet file of tests/data/jet with one byte changed, and what the program makes
// of it.
#pragma once
#include "platform/dao/connection.h"
#include "platform/runtime/paths.h"
#include "support/jet_reader.h"
#include "support/jet_tables.h"
#include "support/test_data.h"

#include <optional>

namespace tolvek::test {

struct ByteChange {
    std::size_t at;
    unsigned char value;
};

class ChangedJet {
public:
    enum class Outcome { SameRows, Refused, OtherRows };

    explicit ChangedJet(const std::string& name)
        : sound_(readBytes(std::filesystem::path(TOLVEK_TEST_DATA) / "jet" / (name + ".mdb"))),
          rows_(*rowsOf(sound_))
    {
    }
    const std::string& bytes() const { return sound_; }

    Outcome with(const ByteChange& change) const
    {
        std::string bytes = sound_;
        bytes[change.at] = static_cast<char>(change.value);
        const auto found = rowsOf(bytes);
        if (!found) return Outcome::Refused;
        return *found == rows_ ? Outcome::SameRows : Outcome::OtherRows;
    }

private:
    // Empty for a file that is refused.
    std::optional<JetTables> rowsOf(const std::string& bytes) const
    {
        const auto source = folder_ / "Old.Mdb", target = folder_ / "New.Mdb";
        writeBytes(source, bytes);
        std::filesystem::remove(target);
        try {
            DBEngine::CompactDatabase(pathText(source), pathText(target));
        } catch (const RuntimeError&) {
            return std::nullopt;
        }
        return tablesOf(*Connection::open(target));
    }

    JetReader reader_;
    TempFolder folder_;
    std::string sound_;
    JetTables rows_;
};

}
