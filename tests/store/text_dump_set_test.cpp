#include "app/file_names.h"
#include "platform/system/test_hooks.h"
#include "store/text_dump_set.h"

#include "support/fault_injection.h"
#include "text_dump_fixture.h"

namespace tolvek::test {
namespace {

class TextDumpSetTest : public TextDumpFixture {
protected:
    void TearDown() override
    {
        hooks::setFileProbe({});
        TextDumpFixture::TearDown();
    }
    static void writeNew()
    {
        const UnLoadBeside beside;
        for (const auto unLoad :
             {tblTolvek_UnLoad, tblSearch_Addresses_UnLoad, tblSearch_Name_UnLoad, tblFriend_UnLoad,
              tblFilter_UnLoad, tblFilterData_UnLoad})
            unLoad();
    }
    static void unLoadAll()
    {
        writeNew();
        exchangeTextFiles();
    }
    // One row in each table, so that no two sets have a file in common.
    static void givenRows(const Text& text)
    {
        for (const Statement& clear :
             {Statement{u"DELETE FROM tblTolvek"}, Statement{u"DELETE FROM tblSearch_Addresses"},
              Statement{u"DELETE FROM tblSearch_Name"}, Statement{u"DELETE FROM tblFriend"},
              Statement{u"DELETE FROM tblFilter"}, Statement{u"DELETE FROM tblFilterData"}})
            execute(clear);
        putMail(u"101112", text);
        put(u"tblSearch_Addresses", {text});
        put(u"tblSearch_Name", {text});
        addFriend(u"a@x.jp", text, u"p");
        addFilter(10, 0, 0, u"h", text);
        putResult(u"0", u"10", u"101112", text);
    }
    // The number of files, of the six, that contain the text.
    int filesWith(const Text& text) const
    {
        int found = 0;
        for (const char* name : {"tblTolvek.Txt", "tblSearch_Addr.Txt", "tblSearch_Name.Txt",
                                 "tblFriend.Txt", "tblFilter.txt", "tblFilterData.txt"})
            found += textOf(name).find(text) != Text::npos ? 1 : 0;
        return found;
    }
    static bool isNoArchive(const Path& path)
    {
        return !path.filename().string().starts_with("Tolvek.Mdb");
    }
    std::size_t litter() const
    {
        std::size_t found = 0;
        for (const std::string& name : fileNames(folder.path()))
            found +=
                name.ends_with(toUtf8(kNewSuffix)) || name.ends_with(toUtf8(kWholeSuffix)) ? 1 : 0;
        return found;
    }
};

TEST_F(TextDumpSetTest, TheFilesAreWrittenBesideTheirPlacesAndExchanged)
{
    givenRows(u"first");
    unLoadAll();
    givenRows(u"second");
    writeNew();
    EXPECT_EQ(filesWith(u"first"), 6);
    exchangeTextFiles();
    EXPECT_EQ(filesWith(u"second"), 6);
    EXPECT_EQ(litter(), 0u);
}

TEST_F(TextDumpSetTest, WhatWasWrittenBesideIsDropped)
{
    givenRows(u"first");
    unLoadAll();
    givenRows(u"second");
    writeNew();
    dropNewTextFiles();
    EXPECT_EQ(filesWith(u"first"), 6);
    EXPECT_EQ(litter(), 0u);
}

TEST_F(TextDumpSetTest, AnEndAtAnyMomentLeavesOneSetOrTheOther)
{
    givenRows(u"first");
    unLoadAll();
    givenRows(u"second");
    KeptFolder kept(folder.path());
    kept.keep();
    int exchanged = 0;
    endAtEachOperation(
        unLoadAll,
        [&](int operation) {
            settleTextFiles();
            EXPECT_EQ(filesWith(u"first") + filesWith(u"second"), 6) << operation;
            EXPECT_EQ(filesWith(u"first") % 6, 0) << "not mixed, operation " << operation;
            EXPECT_EQ(litter(), 0u) << operation;
            exchanged += filesWith(u"second") / 6;
            kept.putBack();
        },
        {}, isNoArchive);
    EXPECT_GT(exchanged, 6) << "an exchange that has begun is finished";
}

TEST_F(TextDumpSetTest, AFailureInTheMiddleOfTheExchangeIsMadeGoodByTheNextSettling)
{
    givenRows(u"first");
    unLoadAll();
    givenRows(u"second");
    writeNew();
    hooks::setFileProbe([](FileOperation operation, const Path& path) {
        if (operation == FileOperation::Replace && path.filename() == "tblFriend.Txt")
            throw std::system_error(std::make_error_code(std::errc::io_error));
    });
    EXPECT_THROW(exchangeTextFiles(), RuntimeError);
    hooks::setFileProbe({});
    settleTextFiles();
    EXPECT_EQ(filesWith(u"second"), 6);
    EXPECT_EQ(litter(), 0u);
}

TEST_F(TextDumpSetTest, AFileThatMayNotBeWrittenIsToldByItsRoutine)
{
    givenText("tblFriend.Txt", u"kept");
    std::filesystem::permissions(file("tblFriend.Txt"), std::filesystem::perms::owner_read);
    const UnLoadBeside beside;
    tblFriend_UnLoad();
    EXPECT_EQ(reports.take(), Reports{"tblFriend_UnLoad 75"});
    EXPECT_EQ(textOf("tblFriend.Txt"), u"kept");
    EXPECT_EQ(litter(), 0u);
}

TEST_F(TextDumpSetTest, ALinkStaysALinkAndAFileKeepsItsMode)
{
    givenRows(u"first");
    std::filesystem::create_directory(file("elsewhere"));
    writeBytes(file("elsewhere") / "mails", "old");
    std::filesystem::create_symlink("elsewhere/mails", file("tblTolvek.Txt"));
    writeBytes(file("tblFriend.Txt"), "old");
    constexpr auto kMode = std::filesystem::perms(0600);
    std::filesystem::permissions(file("tblFriend.Txt"), kMode);
    unLoadAll();
    EXPECT_TRUE(std::filesystem::is_symlink(file("tblTolvek.Txt")));
    EXPECT_EQ(filesWith(u"first"), 6);
    EXPECT_EQ(std::filesystem::status(file("tblFriend.Txt")).permissions(), kMode);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(file("elsewhere")), {}), 1);
}

}
}
