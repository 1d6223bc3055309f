#include "app/guard.h"
#include "app/program_end.h"
#include "app/test_hooks.h"
#include "platform/runtime/runtime_error.h"
#include "support/msg_box_script.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <stdexcept>

namespace tolvek::test {
namespace {

struct ProgramEnd {};

class GuardTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        hooks::setEnd([](int) { throw ProgramEnd{}; });
    }
    void TearDown() override { hooks::setEnd({}); }
    MsgBoxScript boxes;
};

TEST_F(GuardTest, AFailedStatementIsReportedAndTheNextOneRuns)
{
    boxes.expect(u"エラー番号： 9\r（" + errorText(9) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (comEnd_Click)");
    bool reached = false;
    ResumeNext on{u"comEnd_Click"};
    EXPECT_FALSE(on([] { throw RuntimeError(9); }));
    EXPECT_TRUE(on([&] { reached = true; }));
    EXPECT_TRUE(reached);
}

TEST_F(GuardTest, AMissingFilePassesToTheNextStatement)
{
    int reached = 0;
    const PassOver53 steps{u"dbCompress"};
    EXPECT_TRUE(steps(
        [] { throw RuntimeError(53); }, [&] { ++reached; },
        [] { throw std::system_error(std::make_error_code(std::errc::no_such_file_or_directory)); },
        [&] { ++reached; }));
    EXPECT_EQ(reached, 2);
}

TEST_F(GuardTest, AnyOtherErrorEndsTheStatements)
{
    boxes.expect(u"エラー番号： 75\r\n（" + errorText(75) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (dbCompress)");
    bool reached = false;
    const PassOver53 steps{u"dbCompress"};
    EXPECT_FALSE(steps([] { throw RuntimeError(75); }, [&] { reached = true; }));
    EXPECT_FALSE(reached);
}

TEST_F(GuardTest, AFailedBodyIsReportedAndLeft)
{
    boxes.expect(u"エラー番号： 13\r\n（" + errorText(13) + u"）", MsgAnswer::Ok,
                 u"エラーメッセージ (edSearch_Addr)");
    bool reached = false;
    EXPECT_FALSE(leaveOnError(u"edSearch_Addr", [&] {
        throw RuntimeError(13);
        reached = true;
    }));
    EXPECT_FALSE(reached);
}

TEST_F(GuardTest, ThePlainFormHasACarriageReturnAlone)
{
    boxes.expect(u"エラー番号： 13\r（" + errorText(13) + u"）");
    EXPECT_FALSE(leavePlainOnError(u"edAddres", [] { throw RuntimeError(13); }));
}

TEST_F(GuardTest, NoFailureIsSwallowedWhoeverThrewIt)
{
    const auto number = [](const std::exception& failure) {
        return asRuntimeError(failure).number();
    };
    EXPECT_EQ(number(std::bad_alloc()), 7);
    EXPECT_EQ(asRuntimeError(std::bad_alloc()).description(), u"メモリが不足しています。");
    EXPECT_EQ(number(std::system_error(std::make_error_code(std::errc::no_such_file_or_directory))),
              53);
    EXPECT_EQ(number(std::filesystem::filesystem_error(
                  "x", std::make_error_code(std::errc::no_space_on_device))),
              61);
    EXPECT_EQ(number(std::logic_error("broken")), 51);
    EXPECT_NE(asRuntimeError(std::logic_error("broken")).description().find(u"broken"), Text::npos);
    EXPECT_EQ(number(RuntimeError(3022)), 3022);
}

TEST_F(GuardTest, TheEndOfTheProgramPassesThroughEveryGuard)
{
    ResumeNext on{u"memDBEdit_Click"};
    EXPECT_THROW(on([] { leaveOnError(u"dbCompress", [] { endProgram(); }); }), ProgramEnd);
    EXPECT_THROW(leavePlainOnError(u"x", [] { endProgram(); }), ProgramEnd);
    const PassOver53 steps{u"dbCompress"};
    EXPECT_THROW(steps([] { endProgram(); }), ProgramEnd);
}

}
}
