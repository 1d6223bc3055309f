// Compares a newly created database with the fields that other versions of the program
// and the users' existing archives have.
#include "platform/dao/connection.h"
#include "support/archive_fixture.h"

#include <optional>

namespace tolvek::test {
namespace {

// Whether the field may be empty, and its default value.
struct FieldRule {
    Text name, type;
    int size = 0;
    bool zeroLength = false;
    const char16_t* byDefault = nullptr;
};

struct TableRule {
    Text name;
    Statement all;
    std::vector<FieldRule> fields;
    std::vector<Text> key;
};

FieldRule emptyText(TextView name, int size)
{
    return {Text(name), u"TEXT(" + decimal(size) + u")", size, true, u""};
}

FieldRule filledText(TextView name, int size)
{
    return {Text(name), u"TEXT(" + decimal(size) + u")", size};
}

TableRule mails()
{
    TableRule table{u"tblTolvek",
                    Statement{u"SELECT * FROM tblTolvek"},
                    {filledText(u"tblTolvek_YMD", 16),
                     filledText(u"tblTolvek_HMS", 16),
                     {u"tblTolvek_SubKey", u"SMALLINT"},
                     {u"tblTolvek_SndRcvFlag", u"YESNO INT"},
                     filledText(u"tblTolvek_SndName", 64),
                     filledText(u"tblTolvek_SndAdd", 64),
                     filledText(u"tblTolvek_RcvName", 64),
                     filledText(u"tblTolvek_RcvAdd", 64),
                     emptyText(u"tblTolvek_Subject", 128)},
                    {u"tblTolvek_YMD", u"tblTolvek_HMS", u"tblTolvek_SubKey",
                     u"tblTolvek_SndRcvFlag", u"tblTolvek_SndAdd", u"tblTolvek_RcvAdd"}};
    for (int block = 1; block <= 16; ++block)
        table.fields.push_back({u"tblTolvek_Mail" + decimal(block), u"LONGTEXT", 0, true, u""});
    table.fields.push_back(emptyText(u"tblTolvek_Include", 64));
    return table;
}

const std::vector<TableRule>& allTables()
{
    static const std::vector<TableRule> tables{
        mails(),
        {u"tblSearch_Addresses",
         Statement{u"SELECT * FROM tblSearch_Addresses"},
         {emptyText(u"tblSearch_Addr_Data", 64)},
         {u"tblSearch_Addr_Data"}},
        {u"tblSearch_Name",
         Statement{u"SELECT * FROM tblSearch_Name"},
         {emptyText(u"tblSearch_Name_Data", 64)},
         {u"tblSearch_Name_Data"}},
        {u"tblFriend",
         Statement{u"SELECT * FROM tblFriend"},
         {emptyText(u"tblFriend_PetKind", 64),
          emptyText(u"tblFriend_Pet", 64),
          emptyText(u"tblFriend_Name", 64),
          filledText(u"tblFriend_Address", 64),
          {u"tblFriend_RecvMailCnt", u"INT"}},
         {u"tblFriend_Address"}},
        {u"tblFilter",
         Statement{u"SELECT * FROM tblFilter"},
         {{u"tblFilter_No", u"SMALLINT"},
          {u"tblFilter_TermsCode", u"SMALLINT", 0, false, u"0"},
          {u"tblFilter_ActionCode", u"SMALLINT", 0, false, u"0"},
          {u"tblFilter_Header", u"LONGTEXT"},
          {u"tblFilter_Data", u"LONGTEXT"}},
         {u"tblFilter_No"}},
        {u"tblFilterData",
         Statement{u"SELECT * FROM tblFilterData"},
         {{u"tblFilterDt_Id", u"INT"},
          {u"tblFilterDt_No", u"SMALLINT"},
          filledText(u"tblFilterDt_Date", 16),
          filledText(u"tblFilterDt_Time", 16),
          {u"tblFilterDt_SubKey", u"SMALLINT"},
          filledText(u"tblFilterDt_SendName", 64),
          filledText(u"tblFilterDt_SendAddr", 64),
          filledText(u"tblFilterDt_RecvName", 64),
          filledText(u"tblFilterDt_RecvAddr", 64),
          {u"tblFilterDt_SndRcvFlag", u"YESNO INT"},
          emptyText(u"tblFilterDt_Subject", 128)},
         {u"tblFilterDt_Id"}},
    };
    return tables;
}

class SchemaTest : public ArchiveFixture {
protected:
    using Row = std::vector<std::optional<Text>>; // a field without a value is left out

    struct Stored {
        int error = 0;
        Row row; // as it is read back
    };

    static bool isText(const FieldRule& field)
    {
        return field.size > 0 || field.type == u"LONGTEXT";
    }
    static bool isKey(const TableRule& table, const FieldRule& field)
    {
        return std::find(table.key.begin(), table.key.end(), field.name) != table.key.end();
    }
    // "1" is valid both as a text and as a number.
    static Row full(const TableRule& table) { return Row(table.fields.size(), u"1"); }
    static Row with(const TableRule& table, std::size_t at, const Text& value)
    {
        Row row = full(table);
        row[at] = value;
        return row;
    }

    // The table is empty again afterwards.
    static Stored store(const TableRule& table, const Row& row)
    {
        Stored stored;
        Database opened = DBEngine::OpenDatabase(gDbPath);
        DBEngine::Workspaces(0).BeginTrans();
        try {
            stored.row = add(opened.OpenRecordset(table.all), row);
        } catch (const RuntimeError& error) {
            stored.error = error.number();
        }
        opened.Close(); // rolls back
        return stored;
    }
    static Row add(Recordset rows, const Row& row)
    {
        rows.AddNew();
        for (std::size_t at = 0; at < row.size(); ++at)
            if (row[at]) rows.setField(static_cast<int>(at), *row[at]);
        rows.Update();
        rows.MoveLast();
        Row read;
        for (int at = 0; at < static_cast<int>(row.size()); ++at) {
            const Value value = rows.field(at);
            read.push_back(value.isNull() ? std::nullopt : std::optional(value.text()));
        }
        return read;
    }
    // Calls `look` with each table, each of its fields and the field's position.
    template <class Look> static void eachField(Look look)
    {
        for (const TableRule& table : allTables())
            for (std::size_t at = 0; at < table.fields.size(); ++at) {
                SCOPED_TRACE(toUtf8(table.fields[at].name));
                look(table, table.fields[at], at);
            }
    }
};

TEST_F(SchemaTest, TheFieldsAreFortyNineInTheirOrderAndOnlyAKeyMustBeGiven)
{
    const auto archive = Connection::open(file("Tolvek.Mdb"));
    int fields = 0;
    for (const TableRule& table : allTables()) {
        const auto columns = archive->query(TextView(
            u"SELECT name, type, \"notnull\" FROM pragma_table_info('" + table.name + u"')"));
        for (const FieldRule& field : table.fields) {
            ASSERT_TRUE(columns->step()) << toUtf8(field.name);
            ++fields;
            EXPECT_EQ(columns->text(0), field.name);
            EXPECT_EQ(columns->text(1), field.type) << toUtf8(field.name);
            EXPECT_EQ(columns->number(2) == 1, isKey(table, field) && field.type != u"YESNO INT")
                << toUtf8(field.name);
        }
        EXPECT_FALSE(columns->step()) << toUtf8(table.name);
    }
    EXPECT_EQ(fields, 49);
}

TEST_F(SchemaTest, EachTableHasItsKeyUnderItsOwnNameAndNoOtherIndexRefusesARow)
{
    const auto archive = Connection::open(file("Tolvek.Mdb"));
    for (const TableRule& table : allTables()) {
        EXPECT_EQ(archive->table(table.name).keyColumns, table.key);
        const auto made = archive->query(
            TextView(u"SELECT sql FROM sqlite_master WHERE name = '" + table.name + u"'"));
        ASSERT_TRUE(made->step());
        EXPECT_NE(made->text(0).find(u"CONSTRAINT \"" + table.name + u"\" PRIMARY KEY"),
                  Text::npos);
    }
    const auto unique = archive->query(
        u"SELECT name FROM sqlite_master WHERE type = 'index' AND sql LIKE '%UNIQUE%'");
    EXPECT_FALSE(unique->step());
}

TEST_F(SchemaTest, ATextTakesItsSizeAndNotOneCharacterMore)
{
    eachField([](const TableRule& table, const FieldRule& field, std::size_t at) {
        if (!isText(field)) return;
        const int longest = field.size > 0 ? field.size : 100000; // a memo has no size
        const Text fitting(static_cast<std::size_t>(longest), u'字');
        const Stored stored = store(table, with(table, at, fitting));
        EXPECT_EQ(stored.error, 0);
        ASSERT_GT(stored.row.size(), at);
        EXPECT_EQ(stored.row[at], fitting);
        if (field.size > 0) {
            EXPECT_EQ(store(table, with(table, at, fitting + u'字')).error, 3163);
        }
    });
}

TEST_F(SchemaTest, AnEmptyTextIsTakenOnlyWhereItMayStand)
{
    eachField([](const TableRule& table, const FieldRule& field, std::size_t at) {
        if (!isText(field)) return;
        EXPECT_EQ(store(table, with(table, at, u"")).error, field.zeroLength ? 0 : 3315);
    });
}

TEST_F(SchemaTest, AFieldThatIsNotGivenHasItsDefaultOrNothing)
{
    eachField([](const TableRule& table, const FieldRule& field, std::size_t at) {
        Row row = full(table);
        row[at].reset();
        const Stored stored = store(table, row);
        if (isKey(table, field) && !field.byDefault && field.type != u"YESNO INT") {
            EXPECT_EQ(stored.error, 3058) << "a key is never made up";
            return;
        }
        ASSERT_EQ(stored.error, 0);
        const bool yesNo = field.type == u"YESNO INT"; // is never Null
        const std::optional<Text> expected =
            field.byDefault ? std::optional<Text>(field.byDefault)
                            : (yesNo ? std::optional<Text>(u"False") : std::nullopt);
        EXPECT_EQ(stored.row[at], expected);
    });
}

TEST_F(SchemaTest, ANumberTakesItsBitsAndNotMore)
{
    const struct {
        TextView type;
        Text least, most, under, over;
    } numbers[] = {{u"SMALLINT", u"-32768", u"32767", u"-32769", u"32768"},
                   {u"INT", u"-2147483648", u"2147483647", u"-2147483649", u"2147483648"}};
    eachField([&](const TableRule& table, const FieldRule& field, std::size_t at) {
        for (const auto& number : numbers) {
            if (field.type != number.type) continue;
            EXPECT_EQ(store(table, with(table, at, number.least)).error, 0);
            EXPECT_EQ(store(table, with(table, at, number.most)).error, 0);
            EXPECT_EQ(store(table, with(table, at, number.under)).error, 3349);
            EXPECT_EQ(store(table, with(table, at, number.over)).error, 3349);
        }
    });
}

}
}
