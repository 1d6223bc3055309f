// An archive for each test: a temporary folder as the program's folder, Tolvek.Mdb in
// it with its six empty tables, a converter library that returns texts with each ' as
// ’, and a script for the boxes.
//
// The end of the program is the exception ProgramEnd, which no report catches:
//
//     EXPECT_THROW(iniWrite(window), ProgramEnd);
//
// Fill the archive with `store(mail(...))`, `addFriend`, `addFilter`; look at it with
// `rows`, `column` and `value`. Each of these opens the file itself.
#pragma once
#include "app/converter_library.h"
#include "app/database.h"
#include "app/program_end.h"
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "store/archive_tables.h"
#include "store/table_create.h"
#include "support/msg_box_script.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {

// Not a std::exception: the failure handlers let it pass.
struct ProgramEnd {
    int code;
};

struct Mail {
    Text YMD = u"20000215";
    Text HMS = u"101112";
    Int16 SubKey = 0;
    bool SndRcvFlag = false;
    Text SndName = u"花子";
    Text SndAdd = u"hanako@example.jp";
    Text RcvName = u"太郎";
    Text RcvAdd = u"taro@example.jp";
    Text Subject = u"こんにちは";
    Text Mail1 = u"本文\r\n";
};

inline Mail mail(TextView SndAdd, TextView RcvAdd, TextView Subject = u"こんにちは",
                 TextView YMD = u"20000215", TextView HMS = u"101112")
{
    Mail made;
    made.SndAdd = SndAdd;
    made.RcvAdd = RcvAdd;
    made.Subject = Subject;
    made.YMD = YMD;
    made.HMS = HMS;
    return made;
}

// Returns texts unchanged except that each single quote becomes ’; no boxes and no
// friends.
inline ConverterLibrary givingBack()
{
    ConverterLibrary library;
    library.Tolvek_Edit = [](const Text&, const Text&, const Text&, Int16& count, Int16& status) {
        count = 0;
        status = 1;
    };
    library.TolvekFriend_Edit = [](const Text&, const Text&, Int16& count, Int16&) { count = 0; };
    library.Mail_StrChange = [](const Text& source, Text& result, Int16& length) {
        result = source;
        for (char16_t& c : result)
            if (c == u'\'') c = u'’';
        length = static_cast<int>(result.size());
    };
    return library;
}

class ArchiveFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        setAppPath(pathText(folder.path()));
        gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
        gIniPath = joinPath(appPath(), u"TOLVEK.ini");
        gMyMailAddr = u"taro@example.jp";
        gMyMailHandle = u"太郎";
        hooks::setConverterLibrary(givingBack());
        hooks::setEnd([](int code) { throw ProgramEnd{code}; });
        registerArchiveTables();
        Table_Create();
    }
    void TearDown() override
    {
        hooks::setFileProbe({});
        gRs = Recordset();
        gDb.Close();
        closeAllFiles();
        hooks::setConverterLibrary({});
        hooks::setEnd({});
        gMyMailAddr.clear();
        gMyMailHandle.clear();
        setStatusLines(u"", u"", u"", u"", u"", u"");
    }

    Path file(const std::string& name) const { return folder / name; }
    bool exists(const std::string& name) const { return fileExists(file(name)); }

    // The number of rows of a table, or of those that match a condition:
    // rows(u"tblTolvek WHERE (tblTolvek_SubKey = 1)").
    template <std::size_t N> int rows(const char16_t (&table)[N], const Text& database = gDbPath)
    {
        Statement sql{u"SELECT * FROM "};
        sql << table;
        return static_cast<int>(column(sql, 0, database).size());
    }
    // The texts of one column of a query, from its first row to its last.
    static std::vector<Text> column(const Statement& sql, int position = 0,
                                    const Text& database = gDbPath)
    {
        Database opened = DBEngine::OpenDatabase(database);
        std::vector<Text> texts;
        for (Recordset found = opened.OpenRecordset(sql); !found.Eof(); found.MoveNext())
            texts.push_back(found.field(position).text());
        opened.Close();
        return texts;
    }
    template <std::size_t N> static std::vector<Text> column(const char16_t (&sql)[N])
    {
        return column(Statement{sql});
    }
    // The first column of a query's only row.
    template <std::size_t N> static Text value(const char16_t (&sql)[N])
    {
        const std::vector<Text> texts = column(sql);
        EXPECT_EQ(texts.size(), 1u);
        return texts.empty() ? Text() : texts.front();
    }

    static void execute(const Statement& sql, const Text& database = gDbPath)
    {
        Database opened = DBEngine::OpenDatabase(database);
        opened.Execute(sql, dbFailOnError);
        opened.Close();
    }
    static void store(const Mail& m, const Text& database = gDbPath)
    {
        Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                      u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, "
                      u"tblTolvek_RcvName, tblTolvek_RcvAdd, tblTolvek_Subject, tblTolvek_Mail1) "
                      u"VALUES( '"};
        sql << m.YMD << u"', '" << m.HMS << u"', " << m.SubKey << u", " << m.SndRcvFlag << u", '"
            << m.SndName << u"', '" << m.SndAdd << u"', '" << m.RcvName << u"', '" << m.RcvAdd
            << u"', '" << m.Subject << u"', '" << m.Mail1 << u"' )";
        execute(sql, database);
    }
    static void addFriend(const Text& address, const Text& name, const Text& pet,
                          const Text& kind = u"くま", int mails = 0)
    {
        Statement sql{u"INSERT INTO tblFriend (tblFriend_PetKind, tblFriend_Pet, tblFriend_Name, "
                      u"tblFriend_Address, tblFriend_RecvMailCnt ) VALUES( '"};
        sql << kind << u"', '" << pet << u"', '" << name << u"', '" << address << u"', " << mails
            << u" )";
        execute(sql);
    }
    static void addFilter(int no, int terms, int action, const Text& header, const Text& data)
    {
        Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,"
                      u"tblFilter_ActionCode,tblFilter_Header,tblFilter_Data ) VALUES( "};
        sql << no << u", " << terms << u", " << action << u", '" << header << u"', '" << data
            << u"' )";
        execute(sql);
    }

    TempFolder folder;
    MsgBoxScript boxes;
};

}
