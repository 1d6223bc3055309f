// An archive with its text files. Reports are collected as "routine number"; a report
// that the test doesn't take makes it fail at its end.
#pragma once
#include "platform/runtime/codepage932.h"
#include "store/text_dump.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"

namespace tolvek::test {

class TextDumpFixture : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        reports.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(reports.take(), Reports{});
        ArchiveFixture::TearDown();
    }

    // The content of the files as text; on disk it is in code page 932.
    void givenText(const std::string& name, const Text& content) const
    {
        writeBytes(file(name), toAnsi(content));
    }
    Text textOf(const std::string& name) const { return fromAnsi(readBytes(file(name))); }

    // Stores a row without the statement builder, so that it may contain any text.
    template <std::size_t N>
    static void put(const char16_t (&table)[N], const std::vector<Text>& fields)
    {
        Statement sql{u"SELECT * FROM "};
        sql << table;
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset added = opened.OpenRecordset(sql);
        added.AddNew();
        for (std::size_t at = 0; at < fields.size(); ++at)
            added.setField(static_cast<int>(at), fields[at]);
        added.Update();
        opened.Close();
    }
    static void putMail(const Text& hms, const Text& subject, const Text& text = u"")
    {
        put(u"tblTolvek", {u"20000215", hms, u"0", u"True", u"花子", u"h@x.jp", u"太郎", u"t@y.jp",
                           subject, text});
    }
    static void putResult(const Text& id, const Text& rule, const Text& time,
                          const Text& sender = u"h@x.jp")
    {
        put(u"tblFilterData", {id, rule, u"20000215", time, u"0", u"花子", sender, u"太郎",
                               u"t@y.jp", u"False", u"件名"});
    }

    // Every field of every row in the order of the keys.
    template <std::size_t N>
    static std::vector<Text> content(const char16_t (&table)[N], int fields)
    {
        Statement sql{u"SELECT * FROM "};
        sql << table;
        Database opened = DBEngine::OpenDatabase(gDbPath);
        std::vector<Text> texts;
        for (Recordset row = opened.OpenRecordset(sql); !row.Eof(); row.MoveNext())
            for (int at = 0; at < fields; ++at)
                texts.push_back(row.field(at).text());
        opened.Close();
        return texts;
    }

    static std::string question(const std::string& title)
    {
        return title + ": ＤＢがありません。\r\nＤＢを作成しますか？";
    }

    ReportList reports;
};

}
