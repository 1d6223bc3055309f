#include "platform/system/test_hooks.h"
#include "store/text_dump.h"

#include "support/yield_watch.h"
#include "text_dump_fixture.h"

namespace tolvek::test {
namespace {

using TextDumpTest = TextDumpFixture;

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

const Text kEmptyBlocks =
    u",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\"\r\n";

TEST_F(TextDumpTest, AMailIsTwentySixQuotedTextsInTheTablesOrder)
{
    putMail(u"101112", u"こんにちは", u"本文, 1\r\n 2 \r\n");
    tblTolvek_UnLoad();
    EXPECT_EQ(readBytes(file("tblTolvek.Txt")),
              "\"20000215\",\"101112\",\"0\",\"True\",\"\x89\xD4\x8E\x71\",\"h@x.jp\","
              "\"\x91\xBE\x98\x59\",\"t@y.jp\",\"\x82\xB1\x82\xF1\x82\xC9\x82\xBF\x82\xCD\","
              "\"\x96\x7B\x95\xB6, 1\r\n 2 \r\n\"" +
                  repeated(",\"\"", 16) + "\r\n");
}

TEST_F(TextDumpTest, MailsStandByDateTimeSubKeySenderAndReceiver)
{
    const std::vector<std::vector<Text>> mails{
        {u"20000216", u"101112", u"0", u"a@x.jp", u"a@x.jp"},
        {u"20000215", u"101113", u"0", u"a@x.jp", u"a@x.jp"},
        {u"20000215", u"101112", u"1", u"a@x.jp", u"a@x.jp"},
        {u"20000215", u"101112", u"0", u"b@x.jp", u"a@x.jp"},
        {u"20000215", u"101112", u"0", u"a@x.jp", u"b@x.jp"},
        {u"20000215", u"101112", u"0", u"a@x.jp", u"a@x.jp"},
    };
    int number = 1;
    for (const std::vector<Text>& m : mails)
        put(u"tblTolvek",
            {m[0], m[1], m[2], u"0", u"n", m[3], u"n", m[4], u"subject " + decimal(number++)});
    tblTolvek_UnLoad();
    const Text written = textOf("tblTolvek.Txt");
    std::size_t last = 0;
    for (int expected = 6; expected >= 1; --expected) {
        const std::size_t place = written.find(u"subject " + decimal(expected));
        ASSERT_NE(place, Text::npos);
        EXPECT_GT(place, last) << expected;
        last = place;
    }
}

TEST_F(TextDumpTest, ATextOfBlanksIsWrittenAsNothingInAMailAlone)
{
    put(u"tblTolvek", {u"20000215", u"101112", u"7", u"0", u" 　", u"h@x.jp", u"太郎", u"t@y.jp",
                       u"　 ", u" x "});
    addFriend(u"h@x.jp", u"　", u" ", u"");
    tblTolvek_UnLoad();
    tblFriend_UnLoad();
    EXPECT_EQ(textOf("tblTolvek.Txt"), u"\"20000215\",\"101112\",\"7\",\"False\",\"\",\"h@x.jp\","
                                       u"\"太郎\",\"t@y.jp\",\"\",\" x \"" +
                                           kEmptyBlocks);
    EXPECT_EQ(textOf("tblFriend.Txt"), u"\"\",\" \",\"　\",\"h@x.jp\",0\r\n");
}

TEST_F(TextDumpTest, AQuoteIsWrittenAsItIs)
{
    putMail(u"101112", u"say \"x\"", u"\"");
    tblTolvek_UnLoad();
    EXPECT_NE(textOf("tblTolvek.Txt").find(u",\"say \"x\"\",\"\"\",\"\""), Text::npos);
}

TEST_F(TextDumpTest, WhatTheFileCantHoldKeepsItsPlaceVisible)
{
    putMail(u"101112", u"é한😀～", u"a\u001Ab");
    tblTolvek_UnLoad();
    EXPECT_NE(textOf("tblTolvek.Txt").find(u",\"〓〓〓～\",\"a〓b\","), Text::npos);
}

TEST_F(TextDumpTest, TheTablesOfSearchAreListsOfOneText)
{
    for (const TextView name : {u"花子", u"", u"TARO", u"ぼく"})
        put(u"tblSearch_Name", {Text(name)});
    for (const TextView address : {u"b@x.jp", u"a@x.jp"})
        put(u"tblSearch_Addresses", {Text(address)});
    tblSearch_Name_UnLoad();
    tblSearch_Addresses_UnLoad();
    EXPECT_EQ(textOf("tblSearch_Name.Txt"), u"\"\"\r\n\"TARO\"\r\n\"ぼく\"\r\n\"花子\"\r\n");
    EXPECT_EQ(textOf("tblSearch_Addr.Txt"), u"\"a@x.jp\"\r\n\"b@x.jp\"\r\n");
}

TEST_F(TextDumpTest, AFriendEndsWithAPlainNumber)
{
    addFriend(u"h@x.jp", u"花子", u"もも", u"くま", 70000);
    addFriend(u"a@x.jp", u"次郎", u"はち", u"いぬ", -1);
    tblFriend_UnLoad();
    EXPECT_EQ(textOf("tblFriend.Txt"), u"\"いぬ\",\"はち\",\"次郎\",\"a@x.jp\",-1\r\n"
                                       u"\"くま\",\"もも\",\"花子\",\"h@x.jp\",70000\r\n");
}

TEST_F(TextDumpTest, RulesAreNumberedByTenInTheirOrder)
{
    addFilter(20, 5, 0, u"三", u"c");
    addFilter(5, 0, 0, u"一", u"a");
    addFilter(7, 1, 1, u"二", u"b");
    tblFilter_UnLoad();
    EXPECT_EQ(textOf("tblFilter.txt"), u"10,0,0,\"一\",\"a\"\r\n20,1,1,\"二\",\"b\"\r\n"
                                       u"30,5,0,\"三\",\"c\"\r\n");
}

TEST_F(TextDumpTest, ResultsAreCountedFromNoughtInTheirOrderAndKeepTheirRule)
{
    putResult(u"17", u"5", u"101112");
    putResult(u"3", u"20", u"090000");
    putResult(u"4", u"5", u"101112", u"a@x.jp");
    tblFilterData_UnLoad();
    EXPECT_EQ(textOf("tblFilterData.txt"),
              u"0,5,\"20000215\",\"101112\",0,\"花子\",\"a@x.jp\",\"太郎\",\"t@y.jp\",\"False\","
              u"\"件名\"\r\n"
              u"1,5,\"20000215\",\"101112\",0,\"花子\",\"h@x.jp\",\"太郎\",\"t@y.jp\",\"False\","
              u"\"件名\"\r\n"
              u"2,20,\"20000215\",\"090000\",0,\"花子\",\"h@x.jp\",\"太郎\",\"t@y.jp\",\"False\","
              u"\"件名\"\r\n");
}

struct Direction {
    const char* file;
    void (*unLoad)();
};
constexpr Direction kUnLoads[] = {
    {"tblTolvek.Txt", tblTolvek_UnLoad},
    {"tblSearch_Addr.Txt", tblSearch_Addresses_UnLoad},
    {"tblSearch_Name.Txt", tblSearch_Name_UnLoad},
    {"tblFriend.Txt", tblFriend_UnLoad},
    {"tblFilter.txt", tblFilter_UnLoad},
    {"tblFilterData.txt", tblFilterData_UnLoad},
};

TEST_F(TextDumpTest, AnEmptyTableEmptiesItsFile)
{
    for (const auto& [name, unLoad] : kUnLoads) {
        writeBytes(file(name), "of an earlier unload");
        unLoad();
        EXPECT_TRUE(exists(name)) << name;
        EXPECT_EQ(readBytes(file(name)), "") << name;
        EXPECT_FALSE(gDb.isOpen());
    }
}

TEST_F(TextDumpTest, ASecondUnloadGivesTheSameBytesAndTheDatabaseKeepsItsOwn)
{
    for (const TextView hms : {u"101113", u"101111", u"101112"})
        putMail(Text(hms), u"件名");
    addFriend(u"h@x.jp", u"花子", u"もも");
    addFilter(5, 0, 0, u"一", u"a");
    putResult(u"17", u"5", u"101112");
    put(u"tblSearch_Name", {u"花子"});
    put(u"tblSearch_Addresses", {u"h@x.jp"});
    const std::string archive = readBytes(file("Tolvek.Mdb"));
    for (const auto& [name, unLoad] : kUnLoads) {
        unLoad();
        const std::string once = readBytes(file(name));
        EXPECT_NE(once, "") << name;
        unLoad();
        EXPECT_EQ(readBytes(file(name)), once) << name;
    }
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), archive);
}

TEST_F(TextDumpTest, AWholeUnloadIsOnTheDisk)
{
    putMail(u"101112", u"件名");
    std::vector<FileOperation> operations;
    hooks::setFileProbe([&](FileOperation operation, const Path& path) {
        if (path.filename() == "tblTolvek.Txt" || operation == FileOperation::FlushFolder)
            operations.push_back(operation);
    });
    tblTolvek_UnLoad();
    EXPECT_EQ(operations,
              (std::vector<FileOperation>{FileOperation::Create, FileOperation::Write,
                                          FileOperation::Flush, FileOperation::FlushFolder}));
}

// Counted once and written once.
TEST_F(TextDumpTest, EachRowOfAnUnloadYieldsTwice)
{
    for (int n = 1; n <= 3; ++n) {
        putMail(u"10111" + decimal(n), u"件名");
        put(u"tblSearch_Addresses", {decimal(n)});
        put(u"tblSearch_Name", {decimal(n)});
        addFriend(decimal(n), u"n", u"p");
        addFilter(n, 0, 0, u"h", u"d");
        putResult(decimal(n), u"5", u"101112");
    }
    for (const auto& [name, unLoad] : kUnLoads)
        EXPECT_EQ(yieldsOf(unLoad), 6) << name;
}

}
}
