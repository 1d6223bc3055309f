// An archive on a read-only medium, such as a disc of old mail: the start reports what
// it couldn't do, and everything can be browsed.
#include "dialogs/frm_splash.h"
#include "platform/forms/events.h"
#include "platform/system/test_hooks.h"
#include "shell/frm_tolvek_events.h"
#include "shell/tolvek_main.h"
#include "store/search_tables.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"

#include <map>
#include <system_error>

namespace tolvek::test {
namespace {

using Permissions = std::filesystem::perms;

constexpr Permissions kRead =
    Permissions::owner_read | Permissions::group_read | Permissions::others_read;
constexpr Permissions kEnter =
    Permissions::owner_exec | Permissions::group_exec | Permissions::others_exec;

class ReadOnlyArchiveTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        App.PrevInstance = 0;
        writeBytes(file("TOLVEK.ini"), "[PostPet Mail Option]\r\nMy Mail Addr=taro@example.jp\r\n");
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"first", u"20000215", u"101112"));
        store(mail(u"hanako@example.jp", u"taro@example.jp", u"second", u"20000216", u"101112"));
        edSearch_Addr();
        edSearch_Name();
        addFilter(10, 1, 0, u"花子から", u"花子");
        DBEngine::Rest();
        reports.listen();
    }
    void TearDown() override
    {
        hooks::setFileProbe({});
        std::filesystem::permissions(folder.path(), Permissions::owner_all);
        splash.Unload();
        gUnloading = -1; // the window closes without the exit's steps
        window.Unload();
        gUnloading = 0;
        gDisplayType = 0;
        ArchiveFixture::TearDown();
    }

    // By the file modes; for a superuser, who isn't bound by them, by the operations.
    void makeReadOnly()
    {
        for (const std::string& name : fileNames(folder.path()))
            std::filesystem::permissions(file(name), kRead);
        std::filesystem::permissions(folder.path(), kRead | kEnter);
        hooks::setFileProbe([this](FileOperation operation, const Path& path) {
            const bool reads = operation == FileOperation::Open ||
                               operation == FileOperation::Read || operation == FileOperation::List;
            if (!reads && path.string().starts_with(folder.path().string()))
                throw std::system_error(std::make_error_code(std::errc::read_only_file_system));
        });
    }
    std::map<std::string, std::string> contents() const
    {
        std::map<std::string, std::string> all;
        for (const std::string& name : fileNames(folder.path()))
            all[name] = readBytes(file(name));
        return all;
    }
    void pick(ListBox& list, int row)
    {
        list.setListIndex(row);
        rethrowKept();
    }

    ReportList reports;
    frmSplash splash;
    frmTolvekEvents window;
};

TEST_F(ReadOnlyArchiveTest, TheCompactionAloneIsToldAndEveryDisplayCanBeBrowsed)
{
    makeReadOnly();
    const auto before = contents();
    Main(splash, window);
    EXPECT_EQ(reports.take(), Reports{"dbCompress 75"});
    ASSERT_TRUE(window.Visible());
    for (int display = 0; display <= 3; ++display) {
        ASSERT_GT(window.lstNameOrAddr->ListCount(), 0) << display;
        pick(*window.lstNameOrAddr, 0);
        EXPECT_GT(window.lstSubject->ListCount(), display < 3 ? 0 : -1) << display;
        emit window.lblNameOrAddr->Click();
        rethrowKept();
    }
    pick(*window.lstNameOrAddr, 0);
    EXPECT_EQ(window.lstSubject->ListCount(), 2);
    EXPECT_EQ(window.txtMail->Text(), u"本文\r\n");
    EXPECT_EQ(reports.take(), Reports{});
    EXPECT_EQ(contents(), before);
}

TEST_F(ReadOnlyArchiveTest, TheEndTellsThatTheSettingsCantBeWritten)
{
    makeReadOnly();
    const auto before = contents();
    Main(splash, window);
    reports.take();
    EXPECT_THROW(
        {
            window.window()->close();
            rethrowKept();
        },
        ProgramEnd);
    EXPECT_EQ(reports.take(), Reports{"Tolvek: " + toUtf8(gIniPath) + "　書き込みエラー"});
    EXPECT_EQ(contents(), before);
}

}
}
