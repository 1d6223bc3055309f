#include "jet_fixture.h"
#include "platform/system/test_hooks.h"

namespace tolvek::test {
namespace {

class JetImportTest : public JetTest {
protected:
    void expectEveryField(const std::string& name)
    {
        const JetTables wanted = expectedTables(name), found = converted();
        for (const auto& [table, rows] : wanted)
            EXPECT_TRUE(found.contains(table) && found.at(table) == rows) << name << ", " << table;
        EXPECT_EQ(found.size(), std::max<std::size_t>(wanted.size(), 1)) << name;
    }
    Text schemaOf(TextView name) const
    {
        return Connection::open(folder_ / "New.Mdb")
            ->pragma(u"SELECT group_concat(sql, '; ') FROM sqlite_master WHERE tbl_name = '" +
                     Text(name) + u"'");
    }
    // Knows tblFriend, or a variant of it with other rules.
    static void knowFriends(
        const std::function<void(Field&)>& change = [](Field&) {},
        const Text& key = u"tblFriend_Address")
    {
        const auto own = [=](const TableDef& found) {
            if (found.Name != u"tblFriend") return std::optional<TableDef>();
            TableDef table(found.Name);
            for (Field field : found.Fields.items()) {
                change(field);
                table.Fields.Append(field);
            }
            Index index = table.CreateIndex(u"tblFriend");
            index.Primary = true;
            index.Fields.Append(index.CreateField(key));
            table.Indexes.Append(index);
            return std::optional(table);
        };
        DBEngine::setKnownTables({own, {}});
    }
};

TEST_F(JetImportTest, EveryFieldOfEveryRowComesOver)
{
    for (const std::string name : {"current_jet4", "v210_jet4", "v210_apostrophe_jet4",
                                   "v210_twins_jet4", "empty_current_jet4", "foreign_jet4"}) {
        given(name);
        ASSERT_EQ(errorOfCompacting(), 0) << name;
        expectEveryField(name);
        EXPECT_TRUE(isUnchanged()) << name;
        EXPECT_EQ(files(), (Names{"New.Mdb", "Old.Mdb"}));
        removeFile(folder_ / "New.Mdb");
    }
}

TEST_F(JetImportTest, TheNewFileIsOneOfOurs)
{
    given("current_jet4");
    ASSERT_EQ(errorOfCompacting(), 0);
    const auto connection = Connection::open(folder_ / "New.Mdb");
    EXPECT_EQ(connection->pragma(u"PRAGMA encoding"), u"UTF-16le");
    EXPECT_EQ(connection->pragma(u"PRAGMA application_id"), u"1416590923");
    EXPECT_EQ(connection->pragma(u"PRAGMA user_version"), u"1");
    EXPECT_EQ(connection->pragma(u"PRAGMA integrity_check"), u"ok");
    Database database = DBEngine::OpenDatabase(path("New.Mdb"));
    Recordset all = database.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
    all.MoveLast();
    EXPECT_EQ(all.RecordCount(), 56);
}

TEST_F(JetImportTest, AnUnknownTableHasItsTypesAndNoRules)
{
    given("foreign_jet4");
    ASSERT_EQ(errorOfCompacting(), 0);
    const Text schema = schemaOf(u"住所録");
    EXPECT_NE(schema.find(u"\"ID\" INT"), Text::npos);
    EXPECT_NE(schema.find(u"\"氏名\" TEXT(40)"), Text::npos);
    EXPECT_NE(schema.find(u"\"備考\" LONGTEXT"), Text::npos);
    EXPECT_EQ(schema.find(u"not empty"), Text::npos);
    EXPECT_EQ(schema.find(u"PRIMARY"), Text::npos);
}

TEST_F(JetImportTest, AKnownTableHasItsOwnKeyAndRules)
{
    given("current_jet4");
    knowFriends();
    ASSERT_EQ(errorOfCompacting(), 0);
    expectEveryField("current_jet4");
    EXPECT_NE(schemaOf(u"tblFriend").find(u"PRIMARY KEY (\"tblFriend_Address\")"), Text::npos);
    EXPECT_EQ(schemaOf(u"tblFilter").find(u"PRIMARY KEY"), Text::npos);
}

// The engine that wrote the file enforced the same rules.
TEST_F(JetImportTest, RowsThatBreakAKnownTablesRulesAreDamage)
{
    given("current_jet4");
    knowFriends([](Field& field) { field.Size = 1; });
    EXPECT_EQ(errorOfCompacting(), 3343);
    knowFriends([](Field&) {}, u"tblFriend_RecvMailCnt");
    EXPECT_EQ(errorOfCompacting(), 3343);
    EXPECT_EQ(files(), Names{"Old.Mdb"});
    EXPECT_TRUE(isUnchanged());
}

TEST_F(JetImportTest, ATargetThatIsThereAndAMissingSource)
{
    given("foreign_jet4");
    writeBytes(folder_ / "New.Mdb", "x");
    EXPECT_EQ(errorOfCompacting(), 3204);
    EXPECT_EQ(readBytes(folder_ / "New.Mdb"), "x");
    removeFile(folder_ / "Old.Mdb");
    removeFile(folder_ / "New.Mdb");
    EXPECT_EQ(errorOfCompacting(), 3024);
    EXPECT_EQ(files(), Names{});
}

TEST_F(JetImportTest, ANewerJetIsNotKnown)
{
    given("foreign_jet4");
    for (const char version : {'\2', '\3', '\5'}) {
        std::string newer = contents_;
        newer[20] = version;
        givenBytes(newer);
        EXPECT_EQ(errorOfCompacting(), 3041);
        EXPECT_EQ(errorOfOpening(), 3041);
        EXPECT_TRUE(isUnchanged());
    }
    EXPECT_EQ(files(), Names{"Old.Mdb"});
    EXPECT_EQ(errorTextOf([&] { DBEngine::OpenDatabase(path()); }),
              u"データベース '" + path() + u"' の形式には対応していません。");
}

// The reader's library checks more of the header than the program does.
TEST_F(JetImportTest, AHeadThatTheReaderRefusesIsNotKnown)
{
    given("foreign_jet4");
    std::string other = contents_;
    other[0] = '\1';
    givenBytes(other);
    EXPECT_EQ(errorOfCompacting(), 3041);
    EXPECT_EQ(errorOfOpening(), 3041);
    EXPECT_TRUE(isUnchanged());
    EXPECT_EQ(files(), Names{"Old.Mdb"});
}

TEST_F(JetImportTest, TablesThatCantBeAllAreDamage)
{
    given("current_jet4");
    std::vector<TableDef> found;
    DBEngine::setKnownTables({{}, [&](const std::vector<TableDef>& tables) {
                                  found = tables;
                                  return false;
                              }});
    EXPECT_EQ(errorOfCompacting(), 3343);
    EXPECT_EQ(files(), Names{"Old.Mdb"});
    ASSERT_EQ(found.size(), 6u);
    const auto friends = std::ranges::find(found, Text(u"tblFriend"), &TableDef::Name);
    ASSERT_NE(friends, found.end());
    EXPECT_EQ(friends->Fields.items().back().Type, dbLong);
}

// Zeroes the last two bytes of a name, as in a part of the file that was lost.
TEST_F(JetImportTest, TextsWithAZeroAreTakenAsTheyAreAndCounted)
{
    given("foreign_jet4");
    DBEngine::takeSpoiltTexts();
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_EQ(DBEngine::takeSpoiltTexts(), 0);
    removeFile(folder_ / "New.Mdb");
    const std::string name("\x71\x5C\x30\x75", 4); // 山田
    const std::size_t at = contents_.find(name);
    ASSERT_NE(at, std::string::npos);
    std::string spoilt = contents_;
    spoilt.replace(at + 2, 2, 2, '\0');
    givenBytes(spoilt);
    EXPECT_EQ(errorOfCompacting(), 0);
    EXPECT_EQ(errorOfOpening(), 0);
    EXPECT_EQ(DBEngine::takeSpoiltTexts(), 2);
    EXPECT_EQ(DBEngine::takeSpoiltTexts(), 0);
}

// It belongs to an earlier file of that name in our own format.
TEST_F(JetImportTest, AJournalOfThatNameIsntPlayedIn)
{
    given("foreign_jet4");
    for (const char* suffix : {"-journal", "-wal"})
        writeBytes(folder_ / ("Old.Mdb" + std::string(suffix)), std::string(4096, 'x'));
    EXPECT_EQ(errorOfCompacting(), 0);
    expectEveryField("foreign_jet4");
    EXPECT_TRUE(isUnchanged());
}

TEST_F(JetImportTest, LeftoversOfAKilledImportAreNotInTheWay)
{
    given("foreign_jet4");
    for (const char* name : {"New.Mdb.Compact", "New.Mdb-journal"})
        writeBytes(folder_ / name, std::string(5000, 'x'));
    EXPECT_EQ(errorOfCompacting(), 0);
    expectEveryField("foreign_jet4");
    EXPECT_EQ(files(), (Names{"New.Mdb", "Old.Mdb"}));
}

// Each operation on the disk fails in turn, until the work succeeds.
TEST_F(JetImportTest, WhateverFailsNothingIsLeftAndItIsNeitherDamageNor53)
{
    given("foreign_jet4");
    for (const auto failure :
         {std::errc::no_space_on_device, std::errc::no_such_file_or_directory}) {
        int failures = 0;
        for (int fatal = 1;; ++fatal, ++failures) {
            int count = 0;
            hooks::setFileProbe([&](FileOperation operation, const Path& at) {
                const bool isSpared =
                    operation == FileOperation::List || operation == FileOperation::Remove;
                if (!isSpared && ++count == fatal)
                    throw std::system_error(std::make_error_code(failure), at.string());
            });
            const int error = errorOfCompacting();
            hooks::setFileProbe({});
            ASSERT_TRUE(isUnchanged());
            if (error == 0) break;
            EXPECT_TRUE(error == 57 || error == 61 || error == 75 || error == 429)
                << error << ", " << fatal;
            EXPECT_EQ(files(), Names{"Old.Mdb"}) << fatal;
        }
        EXPECT_GT(failures, 5);
        removeFile(folder_ / "New.Mdb");
    }
}

}
}
