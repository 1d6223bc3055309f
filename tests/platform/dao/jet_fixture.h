// The Jet files of tests/data/jet in a folder of their own, and their contents.
#pragma once
#include "dao_fixture.h"
#include "platform/system/test_hooks.h"
#include "support/jet_reader.h"
#include "support/jet_tables.h"
#include "support/test_data.h"

namespace tolvek::test {

class JetTest : public testing::Test {
protected:
    ~JetTest() override
    {
        hooks::setFileProbe({});
        DBEngine::Abandon();
        DBEngine::setKnownTables({});
    }

    // A copy of a file of the test data, as Old.Mdb.
    void given(const std::string& name)
    {
        contents_ = readBytes(std::filesystem::path(TOLVEK_TEST_DATA) / "jet" / (name + ".mdb"));
        writeBytes(folder_ / "Old.Mdb", contents_);
    }
    void givenBytes(const std::string& bytes)
    {
        contents_ = bytes;
        writeBytes(folder_ / "Old.Mdb", contents_);
    }
    bool isUnchanged() const { return readBytes(folder_ / "Old.Mdb") == contents_; }

    Text path(const std::string& name = "Old.Mdb") const { return pathText(folder_ / name); }
    int errorOfCompacting() const
    {
        return errorOf([&] { DBEngine::CompactDatabase(path(), path("New.Mdb")); });
    }
    int errorOfOpening() const
    {
        return errorOf([&] { DBEngine::OpenDatabase(path()).Close(); });
    }
    JetTables converted() const { return tablesOf(*Connection::open(folder_ / "New.Mdb")); }
    std::vector<std::string> files() const
    {
        auto names = fileNames(folder_.path());
        std::sort(names.begin(), names.end());
        return names;
    }

    JetReader reader_;
    TempFolder folder_;
    std::string contents_;
};

}
