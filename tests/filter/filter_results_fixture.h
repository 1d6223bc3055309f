// Rules in memory, mails in an archive, and functions that show what the rules list.
#pragma once
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvek::test {

using Texts = std::vector<Text>;

class FilterResultsTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gFilterRule = {};
        gFilterRuleCnt = 0;
        gFilterDataId = 77;
    }
    void TearDown() override
    {
        gFilterRule = {};
        gFilterRuleCnt = 0;
        ArchiveFixture::TearDown();
    }

    // A rule in memory, numbered by 10; its header is its condition.
    static void addRule(int code, const Text& data, int action = 0, const Text& header = u"見出し")
    {
        FilterRule& rule = gFilterRule[gFilterRuleCnt];
        ++gFilterRuleCnt;
        rule.No = 10 * gFilterRuleCnt;
        rule.TermsCode = code;
        rule.ActionCode = action;
        rule.Header = header;
        rule.Data = data;
    }
    static void run()
    {
        const DBEngine::Session session;
        tblFilterData_Sel();
    }

    // Mails are listed in the order of insertion: each has a later date.
    void mailWith(const Text& subject, const Text& sndAdd = u"a@x.jp",
                  const Text& rcvAdd = u"b@x.jp", const Text& sndName = u"太郎",
                  const Text& rcvName = u"花子")
    {
        Mail made = mail(sndAdd, rcvAdd, subject, nextDate());
        made.SndName = sndName;
        made.RcvName = rcvName;
        store(made);
    }
    // Written without the statement builder; an unset text is Null.
    void rawMail(const std::optional<Text>& subject, const std::optional<Text>& sndName,
                 const Text& rcvName = u"花子")
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        Recordset mails = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        mails.AddNew();
        mails.setField(0, nextDate());
        mails.setField(1, u"101112");
        mails.setField(2, 0);
        mails.setField(3, 0);
        if (sndName) mails.setField(4, *sndName);
        mails.setField(5, u"a@x.jp");
        mails.setField(6, rcvName);
        mails.setField(7, u"b@x.jp");
        if (subject) mails.setField(8, *subject);
        mails.Update();
        if (!subject) opened.Execute(nullSubject(), dbFailOnError);
        opened.Close();
    }
    static void manyMails(int count)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        inTransaction([&] {
            for (int i = 0; i < count; ++i) {
                Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, "
                              u"tblTolvek_SubKey, tblTolvek_SndRcvFlag, tblTolvek_SndName, "
                              u"tblTolvek_SndAdd, tblTolvek_RcvName, tblTolvek_RcvAdd, "
                              u"tblTolvek_Subject) VALUES( '"};
                sql << decimal(10000000 + i) << u"', '101112', 0, False, 'a', 'a@x.jp', 'b', "
                    << u"'b@x.jp', '件名' )";
                opened.Execute(sql, dbFailOnError);
            }
        });
        opened.Close();
    }

    static Texts ids() { return column(u"SELECT tblFilterDt_Id FROM tblFilterData"); }
    static Texts subjects() { return column(u"SELECT tblFilterDt_Subject FROM tblFilterData"); }
    // The days of the listed mails: 1 for the first mail inserted.
    static std::vector<int> listed(int rule = 10)
    {
        Statement sql{u"SELECT tblFilterDt_Date FROM tblFilterData"};
        sql << u" WHERE tblFilterDt_No = " << rule;
        std::vector<int> days;
        for (const Text& date : column(sql))
            days.push_back(std::stoi(toUtf8(date)) - 20000000);
        return days;
    }

private:
    Text nextDate() { return decimal(20000000 + ++mails_); }
    static Statement nullSubject()
    {
        Statement sql{u"UPDATE tblTolvek SET tblTolvek_Subject = Null"};
        sql << u" WHERE tblTolvek_Subject = ''";
        return sql;
    }

    int mails_ = 0;
};

}
