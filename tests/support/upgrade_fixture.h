// An archive of a version up to 2.10 as Tolvek.Mdb, without the sub keys and the
// include field.
//
//     givenOldArchive();
//     storeOld(mail(u"a@b.jp", u"c@d.jp", u"一通目"));
//
// storeOld omits the fields that the old table lacks.
#pragma once
#include "app/file_names.h"
#include "store/database_files.h"
#include "store/schema.h"
#include "store/ver_up300.h"
#include "support/archive_fixture.h"

#include <algorithm>

namespace tolvek::test {

inline constexpr TextView kUpgradeBegins =
    u"Tolvekのバージョンが上がっています。\r\n"
    u"データの整合性を調整しています。\r\n"
    u"多少時間が掛る場合がありますが，そのままお待ち下さい。";
inline constexpr TextView kUpgradeFailed = u"エラーが発生しました。\r\n"
                                           u"もう一度やり直すか，作者に連絡してください。";

class UpgradeFixture : public ArchiveFixture {
protected:
    static bool isNewField(TextView name)
    {
        return name == u"tblTolvek_SubKey" || name == u"tblTolvek_Include" ||
               name == u"tblFilterDt_SubKey";
    }
    static TableDef oldDefinition(TableSpec spec)
    {
        std::erase_if(spec.fields, [](const FieldSpec& field) { return isNewField(field.name); });
        std::erase_if(spec.key, isNewField);
        return tableDefinition(spec);
    }
    // Replaces the fixture's archive by one with six empty tables.
    static void givenOldArchive()
    {
        if (databaseExists(gDbPath)) removeDatabase(gDbPath);
        Database made = DBEngine::Workspaces(0).CreateDatabase(gDbPath, u"");
        for (const TableSpec& spec : allTableSpecs())
            made.TableDefs().Append(oldDefinition(spec));
        made.Close();
    }
    static void storeOld(const Mail& m)
    {
        Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, "
                      u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, "
                      u"tblTolvek_RcvName, tblTolvek_RcvAdd, tblTolvek_Subject, tblTolvek_Mail1, "
                      u"tblTolvek_Mail16) VALUES( '"};
        sql << m.YMD << u"', '" << m.HMS << u"', " << m.SndRcvFlag << u", '" << m.SndName << u"', '"
            << m.SndAdd << u"', '" << m.RcvName << u"', '" << m.RcvAdd << u"', '" << m.Subject
            << u"', '" << m.Mail1 << u"', '終わり' )";
        execute(sql);
    }
    static void storeOldFilterData(int id)
    {
        Statement sql{u"INSERT INTO tblFilterData ( tblFilterDt_Id, tblFilterDt_No, "
                      u"tblFilterDt_Date, tblFilterDt_Time, tblFilterDt_SendName, "
                      u"tblFilterDt_SendAddr, tblFilterDt_RecvName, tblFilterDt_RecvAddr, "
                      u"tblFilterDt_SndRcvFlag, tblFilterDt_Subject ) VALUES( "};
        sql << id
            << u", 2, '20000215', '101112', '花子', 'hanako@example.jp', '太郎', "
               u"'taro@example.jp', True, '件名' )";
        execute(sql);
    }
    static void storeKnown(const Text& address, const Text& name)
    {
        Statement addresses{u"INSERT INTO tblSearch_Addresses ( tblSearch_Addr_Data ) VALUES( '"};
        addresses << address << u"' )";
        execute(addresses);
        Statement names{u"INSERT INTO tblSearch_Name ( tblSearch_Name_Data ) VALUES( '"};
        names << name << u"' )";
        execute(names);
    }
    // Stores a row or two in each of the six tables.
    static void givenOldRows()
    {
        storeOld(mail(u"hanako@example.jp", u"taro@example.jp", u"一通目"));
        storeOld(mail(u"hanako@example.jp", u"taro@example.jp", u"二通目", u"20000216"));
        storeOldFilterData(7);
        storeKnown(u"hanako@example.jp", u"花子");
        addFriend(u"hanako@example.jp", u"花子", u"モモ", u"くま", 70000);
        addFilter(2, 1, 0, u"題", u"言葉");
    }
    void givenVersion(const std::string& Ver)
    {
        writeBytes(file("TOLVEK.ini"), "[Tolvek Environment]\r\nVer=" + Ver + "\r\n");
    }
    Text version() const
    {
        const std::string bytes = readBytes(file("TOLVEK.ini"));
        const std::size_t at = bytes.find("Ver=") + 4;
        return fromUtf8(bytes.substr(at, bytes.find('\r', at) - at));
    }

    static Text old() { return sideFile(gDbPath, kV300Suffix); }
    static Text mark() { return sideFile(gDbPath, kUpgradeSuffix); }

    // The rows of a table in the order of its primary key, each as the texts of its fields,
    // without the fields that the old schema lacks.
    using Rows = std::vector<std::vector<Text>>;
    static Rows oldFieldsOf(const TableSpec& table, const Statement& all, const Text& path)
    {
        Database opened = DBEngine::OpenDatabase(path);
        Rows found;
        for (Recordset row = opened.OpenRecordset(all); !row.Eof(); row.MoveNext()) {
            found.emplace_back();
            for (const FieldSpec& field : table.fields)
                if (!isNewField(field.name)) found.back().push_back(row.field(field.name).text());
        }
        opened.Close();
        return found;
    }
    using Archive = std::vector<Rows>;
    static Archive oldFieldsOf(const Text& path)
    {
        return {oldFieldsOf(tblTolvekSpec(), Statement{u"SELECT * FROM tblTolvek"}, path),
                oldFieldsOf(tblSearch_AddressesSpec(),
                            Statement{u"SELECT * FROM tblSearch_Addresses"}, path),
                oldFieldsOf(tblSearch_NameSpec(), Statement{u"SELECT * FROM tblSearch_Name"}, path),
                oldFieldsOf(tblFriendSpec(), Statement{u"SELECT * FROM tblFriend"}, path),
                oldFieldsOf(tblFilterSpec(), Statement{u"SELECT * FROM tblFilter"}, path),
                oldFieldsOf(tblFilterDataSpec(), Statement{u"SELECT * FROM tblFilterData"}, path)};
    }
    // Whether the file at `path` has the current schema.
    static bool isUpgraded(const Text& path)
    {
        try {
            column(Statement{u"SELECT tblTolvek_SubKey FROM tblTolvek"}, 0, path);
            return true;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), 3061);
            return false;
        }
    }
    void runUpgrade()
    {
        VerUp300([this](TextView line) { lines.emplace_back(line); });
    }

    std::vector<Text> lines; // the progress lines
};

}
