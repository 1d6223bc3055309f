// Runs twenty rules over an archive of N mails (30,000 by default) like the menu entry,
// then rules of each code alone. Prints wall-clock and processor seconds, and the
// longest time without a turn of the event loop.
//
//     tolvek_filter_bench [N]
#include "app/database.h"
#include "app/settings.h"
#include "filter/filter_results.h"
#include "filter/filter_rules.h"
#include "platform/dao/dao.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"
#include "shell/filter_commands.h"
#include "store/table_create.h"
#include "support/temp_folder.h"
#include "window/frm_tolvek.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>

namespace {

using namespace tolvek;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Measures the longest time between two ticks of a zero-interval timer.
class Heartbeat {
public:
    Heartbeat()
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            longest = std::max(longest, secondsSince(last_));
            last_ = Clock::now();
        });
        timer_.start(0);
    }
    double longest = 0;

private:
    QTimer timer_;
    Clock::time_point last_ = Clock::now();
};

int resultRows()
{
    Database opened = DBEngine::OpenDatabase(gDbPath);
    int count = 0;
    for (Recordset found = opened.OpenRecordset(Statement{u"SELECT * FROM tblFilterData"});
         !found.Eof(); found.MoveNext())
        ++count;
    opened.Close();
    return count;
}

void measure(const char* name, const std::function<void()>& work)
{
    const auto start = Clock::now();
    const std::clock_t processor = std::clock();
    Heartbeat heart;
    {
        const DBEngine::Session session;
        work();
    }
    const double taken = secondsSince(start);
    const double busy = static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC;
    std::printf("%-34s %7.3f s %7.3f s   waited %4.0f ms %6d rows\n", name, taken, busy,
                1000 * heart.longest, resultRows());
}

// 200 correspondents; one mail in a hundred has the subject searched for.
void storeMail(Database& into, int n)
{
    const int who = n % 200;
    Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                  u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, tblTolvek_RcvName, "
                  u"tblTolvek_RcvAdd, tblTolvek_Subject, tblTolvek_Mail1 ) VALUES( '"};
    sql << decimal(19990101 + n / 100) << u"', '" << decimal(100000 + n % 86400)
        << u"', 0, False, '" << u"ともだち" << who << u"', 'friend" << who
        << u"@mail.example.jp', 'はな', 'hana@example.jp', '"
        << (n % 100 == 7 ? Text(u"夏の旅行の写真") : u"Re: あのね その" + decimal(n % 1000))
        << u"', '" << Text(1000, u'本') << u"' )";
    into.Execute(sql, dbFailOnError);
}

void storeMails(int mails)
{
    Database into = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        for (int n = 0; n < mails; ++n)
            storeMail(into, n);
    });
    into.Close();
}

// A typical condition for each code.
Text condition(int code, int n)
{
    const Text who = decimal(7 * n + 3);
    switch (code) {
    case 0:
        return u"夏の旅行の写真";
    case 1:
        return n % 2 == 0 ? Text(u"旅行") : u"その" + who;
    case 2:
        return u"friend" + who + u"@mail.example.jp";
    case 3:
        return u"FRIEND" + who;
    case 4:
        return u"ともだち" + who;
    default:
        return u"トモダチ" + who;
    }
}

// Stores one rule for each of the codes, in memory and in the store.
void makeRules(const std::vector<int>& codes)
{
    Database into = DBEngine::OpenDatabase(gDbPath);
    inTransaction([&] {
        into.Execute(Statement{u"DELETE FROM tblFilter"}, dbFailOnError);
        int no = 0;
        for (const int code : codes) {
            Statement sql{u"INSERT INTO tblFilter ( tblFilter_No,tblFilter_TermsCode,"
                          u"tblFilter_ActionCode,tblFilter_Header,tblFilter_Data ) VALUES( "};
            ++no;
            sql << no * 10 << u", " << code << u", 0, '規則', '" << condition(code, no) << u"' )";
            into.Execute(sql, dbFailOnError);
        }
    });
    into.Close();
    tblFilter_Get();
}

void measureEachCode()
{
    for (int code = 0; code <= 5; ++code) {
        makeRules({code});
        measure(("one rule of code " + std::to_string(code)).c_str(), tblFilterData_Sel);
    }
}

void walkOnly()
{
    gDb = DBEngine::OpenDatabase(gDbPath);
    gRs = gDb.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"}, dbOpenDynaset);
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    for (; !gRs.Eof(); gRs.MoveNext(), DoEvents())
        gRs.field(u"tblTolvek_Subject");
    gDb.Close();
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const test::TempFolder home;
    setAppPath(pathText(home.path()));
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    gMailTextFontSize = 10;
    Table_Create();
    storeMails(argc > 1 ? std::atoi(argv[1]) : 30000);
    frmTolvek form;
    form.Show();
    std::vector<int> mixed;
    for (int n = 0; n < 20; ++n)
        mixed.push_back(n % 6);
    makeRules(mixed);
    measure("twenty rules, the menu entry", [&] { memFilterGo_Click(form); });
    makeRules(std::vector<int>(20, 3));
    measure("twenty rules of code 3", tblFilterData_Sel);
    measureEachCode();
    measure("a walk that reads every subject", walkOnly);
    return 0;
}
