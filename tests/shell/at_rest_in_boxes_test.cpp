// While a box waits, for a night perhaps, the archive is at rest: no log beside it, all
// its data in the file, and other programs may use it. Checked for each routine that
// reports, and for each of its statements that may fail.
#include "app/database.h"
#include "browse/delete_mail.h"
#include "browse/mail_view.h"
#include "browse/navigator.h"
#include "browse/subject_list.h"
#include "filter/filter_rules.h"
#include "friend/ed_friend.h"
#include "friend/friend_book_file.h"
#include "friend/friend_names.h"
#include "friend/frm_friend.h"
#include "import/tolvek_db.h"
#include "platform/dao/alone.h"
#include "platform/dao/connection.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/test_hooks.h"
#include "store/text_dump.h"
#include "support/backup_fixture.h"
#include "support/fault_injection.h"
#include "support/rest_check.h"

#include <sqlite3.h>

namespace tolvek::test {
namespace {

// Makes the n-th statement fail that reads or changes a table of the archive, on any
// connection.
class FailingStatement {
public:
    explicit FailingStatement(int number)
    {
        left_ = number;
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    }
    ~FailingStatement() { sqlite3_reset_auto_extension(); }
    FailingStatement(const FailingStatement&) = delete;
    FailingStatement& operator=(const FailingStatement&) = delete;
    static bool hasFailed() { return left_ < 0; }
    static void arm(bool armed) { armed_ = armed; }

private:
    static int watch(sqlite3* handle, char**, const sqlite3_api_routines*)
    {
        return sqlite3_set_authorizer(handle, allows, nullptr);
    }
    static int allows(void*, int action, const char* table, const char*, const char*, const char*)
    {
        const bool changes =
            action == SQLITE_INSERT || action == SQLITE_DELETE || action == SQLITE_UPDATE;
        const bool reads = action == SQLITE_READ && isNew_; // for the first column only
        isNew_ = action == SQLITE_SELECT;
        if (!armed_ || !(changes || reads) || !std::string(table).starts_with("tbl"))
            return SQLITE_OK;
        return left_-- == 0 ? SQLITE_DENY : SQLITE_OK;
    }
    static inline int left_ = 0;
    static inline bool armed_ = false;
    static inline bool isNew_ = false;
};

struct Routine {
    const char* name;
    std::function<void(frmTolvek&)> run;
};

const MailBlocks& someText()
{
    static MailBlocks text;
    return text;
}

// The mails of the first rule; in mode 1 to be deleted.
Statement sqlOfRule(Int16 mode)
{
    Statement sql{u""};
    tblFilterData_SqlEdit(mode, 0, sql);
    return sql;
}

void giveFriendTmp()
{
    const Text line = u"\"4\",\"タマ\",\"三郎\",\"saburo@example.jp\",12\r\n";
    writeBytes(nativePath(friendTmpPath()), toAnsi(line));
}

const std::vector<Routine>& routines()
{
    static const std::vector<Routine> all{
        {"duplMailCheck",
         [](frmTolvek&) {
             Int16 found = 0;
             duplMailCheck(u"花", u"a@b.jp", u"太", u"c@d.jp", u"20010101", u"101112", u"題",
                           found);
         }},
        {"TolvekDB_Edit",
         [](frmTolvek&) {
             TolvekDB_Edit(0, u"花", u"a@b.jp", u"太", u"c@d.jp", u"題", u"20010101", u"101112",
                           someText());
         }},
        {"TolvekDB_Insert",
         [](frmTolvek&) {
             TolvekDB_Insert(0, u"花", u"a@b.jp", u"太", u"c@d.jp", u"題", u"20010101", u"101112",
                             0, someText());
         }},
        {"edSearch_Name", [](frmTolvek&) { edSearch_Name(); }},
        {"edSearch_Addr", [](frmTolvek&) { edSearch_Addr(); }},
        {"tblFilter_Get", [](frmTolvek&) { tblFilter_Get(); }},
        {"tblFilter_UpDate", [](frmTolvek&) { tblFilter_UpDate(); }},
        {"tblFilterData_Sel", [](frmTolvek&) { tblFilterData_Sel(); }},
        {"edFriendName", [](frmTolvek&) { edFriendName(); }},
        {"setName",
         [](frmTolvek&) {
             Text name;
             setName(u"hanako@example.jp", name);
         }},
        {"dspSearch_Addr", [](frmTolvek& form) { dspSearch_Addr(form); }},
        {"dspSearch_Name", [](frmTolvek& form) { dspSearch_Name(form); }},
        {"dspSearch_Date", [](frmTolvek& form) { dspSearch_Date(form); }},
        {"dspSearch_Filter", [](frmTolvek& form) { dspSearch_Filter(form); }},
        {"dspSubject", [](frmTolvek& form) { dspSubject(form, u"hanako@example.jp"); }},
        {"dspSubject_Filter", [](frmTolvek& form) { dspSubject_Filter(form, 0); }},
        {"dspMail",
         [](frmTolvek& form) {
             dspSubject(form, u"hanako@example.jp");
             dspMail(form, 0);
         }},
        {"delOneMail",
         [](frmTolvek& form) {
             dspSubject(form, u"hanako@example.jp");
             delOneMail(0);
         }},
        {"delMail", [](frmTolvek&) { delMail(0, u"hanako@example.jp"); }},
        {"delFilter", [](frmTolvek&) { delFilter(0); }},
        {"delMail_13", [](frmTolvek&) { delMail_13(0); }},
        {"delMail_024", [](frmTolvek&) { delMail_024(0, sqlOfRule(1)); }},
        {"tblFilterData_Set024", [](frmTolvek&) { tblFilterData_Set024(0, sqlOfRule(0)); }},
        {"tblFilterData_Set13", [](frmTolvek&) { tblFilterData_Set13(0, sqlOfRule(0)); }},
        {"tmpFriend",
         [](frmTolvek&) {
             giveFriendTmp();
             tmpFriend(friendTmpPath());
         }},
        {"readFriendTmp",
         [](frmTolvek&) {
             giveFriendTmp();
             readFriendTmp();
         }},
        {"frmFriend",
         [](frmTolvek&) {
             frmFriend editor;
             editor.Load();
             emit editor.cmdOK->Click();
             rethrowKept();
             editor.Unload();
         }},
        {"tblTolvek_UnLoad", [](frmTolvek&) { tblTolvek_UnLoad(); }},
        {"tblFriend_UnLoad", [](frmTolvek&) { tblFriend_UnLoad(); }},
        {"tblFilter_UnLoad", [](frmTolvek&) { tblFilter_UnLoad(); }},
        {"tblFilterData_UnLoad", [](frmTolvek&) { tblFilterData_UnLoad(); }},
        {"tblTolvek_Load",
         [](frmTolvek&) {
             tblTolvek_UnLoad();
             tblTolvek_Load();
         }},
        {"tblFriend_Load",
         [](frmTolvek&) {
             tblFriend_UnLoad();
             tblFriend_Load();
         }},
        {"tblSearch_Addresses_Load",
         [](frmTolvek&) {
             tblSearch_Addresses_UnLoad();
             tblSearch_Addresses_Load();
         }},
        {"tblSearch_Name_Load",
         [](frmTolvek&) {
             tblSearch_Name_UnLoad();
             tblSearch_Name_Load();
         }},
        {"tblFilter_Load",
         [](frmTolvek&) {
             tblFilter_UnLoad();
             tblFilter_Load();
         }},
        {"tblFilterData_Load",
         [](frmTolvek&) {
             tblFilterData_UnLoad();
             tblFilterData_Load();
         }},
        {"memBackUp_FileEdit", [](frmTolvek& form) { memBackUp_FileEdit_Click(form); }},
    };
    return all;
}

class AtRestInBoxesTest : public BackUpTest, public ::testing::WithParamInterface<Routine> {
protected:
    void SetUp() override
    {
        BackUpTest::SetUp();
        setBeforeWait(putAllAtRest);
        hooks::setMsgBox([this](const MsgBoxRequest& box) {
            lookInBox(box);
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        kept.keep();
    }
    void TearDown() override
    {
        setBeforeWait({});
        BackUpTest::TearDown();
    }

    void lookInBox(const MsgBoxRequest& box)
    {
        if (box.icon != MsgIcon::Critical) return;
        ++reports;
        lastBox = toUtf8(box.title + box.text);
        rest.look(toUtf8(box.title));
    }
    // Inside a command that has already written.
    bool failsAt(int statement)
    {
        const FailingStatement failing(statement);
        const DBEngine::Session command;
        addFriend(u"jiro@example.jp", u"次郎", u"ポチ");
        FailingStatement::arm(true);
        tillEnd([this] { GetParam().run(form); });
        FailingStatement::arm(false);
        return FailingStatement::hasFailed();
    }
    template <class Work> void tillEnd(const Work& work)
    {
        try {
            work();
        } catch (const ProgramEnd&) { // ends for a locked database, which none is here
            ADD_FAILURE() << "the program ended: " << lastBox;
        }
    }

    RestCheck rest{file("Tolvek.Mdb")};
    KeptFolder kept{folder.path()};
    int reports = 0;
    std::string lastBox;
};

TEST_P(AtRestInBoxesTest, WhicheverStatementFails)
{
    constexpr int kMany = 60;
    for (int statement = 0; statement < kMany && failsAt(statement); ++statement) {
        gDb.Close();
        kept.putBack();
    }
    EXPECT_GT(reports, 0);
}

INSTANTIATE_TEST_SUITE_P(OfEachRoutine, AtRestInBoxesTest, ::testing::ValuesIn(routines()),
                         [](const auto& routine) { return std::string(routine.param.name); });

}
}
