// The boxes of the routines that work on whole files: the archive is at rest in each,
// whichever file operation has failed.
#include "platform/dao/alone.h"
#include "platform/runtime/test_hooks.h"
#include "platform/system/test_hooks.h"
#include "store/db_compress.h"
#include "support/fault_injection.h"
#include "support/rest_check.h"
#include "support/upgrade_fixture.h"

namespace tolvek::test {
namespace {

struct FileRoutine {
    const char* name;
    std::function<void()> run;
};

class AtRestInBoxesTest : public UpgradeFixture, public ::testing::WithParamInterface<FileRoutine> {
protected:
    void SetUp() override
    {
        UpgradeFixture::SetUp();
        setBeforeWait(putAllAtRest);
        hooks::setMsgBox([this](const MsgBoxRequest& box) {
            reports += box.icon == MsgIcon::Critical ? 1 : 0;
            rest.look(toUtf8(box.title + box.text));
            return box.buttons == MsgButtons::YesNo ? MsgAnswer::Yes : MsgAnswer::Ok;
        });
        givenOldArchive();
        givenOldRows();
        DBEngine::Rest();
        kept.keep();
    }
    void TearDown() override
    {
        setBeforeWait({});
        UpgradeFixture::TearDown();
    }
    // A journal that can't be removed stays: the next opening plays it back.
    static bool isNoJournal(const Path& path)
    {
        return !path.filename().string().ends_with("-journal");
    }
    // In the middle of a command that has written already.
    void run()
    {
        const DBEngine::Session command;
        try {
            addFriend(u"jiro@example.jp", u"次郎", u"ポチ");
            GetParam().run();
        } catch (const RuntimeError&) { // of what was written before
        } catch (const ProgramEnd&) {   // of a failed upgrade
        }
        gDb.Close();
    }

    RestCheck rest{file("Tolvek.Mdb")};
    KeptFolder kept{folder.path()};
    int reports = 0;
};

// A part of the operations, always the same one: there are hundreds.
TEST_P(AtRestInBoxesTest, WhicheverFileOperationFails)
{
    constexpr int kStep = 5;
    bool failed = true;
    for (int operation = 0; failed; operation += kStep) {
        failed = false;
        const auto fail = [&failed] {
            failed = true;
            throw std::system_error(std::make_error_code(std::errc::io_error));
        };
        faultAt(operation, fail, {}, isNoJournal, Reads::DontCount);
        run();
        hooks::setFileProbe({});
        DBEngine::Abandon();
        kept.putBack();
    }
    EXPECT_GT(reports, 0);
}

INSTANTIATE_TEST_SUITE_P(OfEachRoutine, AtRestInBoxesTest,
                         ::testing::Values(FileRoutine{"Table_Create", Table_Create},
                                           FileRoutine{"dbCompress", [] { dbCompress(gDbPath); }},
                                           FileRoutine{"VerUp300",
                                                       [] { VerUp300([](TextView) {}); }}),
                         [](const auto& routine) { return std::string(routine.param.name); });

}
}
