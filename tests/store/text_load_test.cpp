// What a load gives: the rows that were written, instead of all rows of the tables,
// except for the two renumbered columns and broken records.
#include "store/text_dump.h"

#include "support/yield_watch.h"
#include "text_dump_fixture.h"

namespace tolvek::test {
namespace {

using Texts = std::vector<Text>;

class TextLoadTest : public TextDumpFixture {
protected:
    static Texts subjects() { return column(u"SELECT tblTolvek_Subject FROM tblTolvek"); }
    // Loads the rules without the filters' memory.
    static void loadRules()
    {
        loadFilterTable({[] {}, [](const FilterRecord&) {}});
    }
};

TEST_F(TextLoadTest, ATableWithoutItsFileKeepsWhatItHas)
{
    putMail(u"101112", u"件名");
    addFriend(u"h@x.jp", u"花子", u"もも");
    addFilter(5, 0, 0, u"一", u"a");
    putResult(u"17", u"5", u"101112");
    put(u"tblSearch_Name", {u"花子"});
    put(u"tblSearch_Addresses", {u"h@x.jp"});
    EXPECT_FALSE(hasTextFiles());
    const std::string archive = readBytes(file("Tolvek.Mdb"));
    for (const auto load : {tblTolvek_Load, tblSearch_Addresses_Load, tblSearch_Name_Load,
                            tblFriend_Load, &TextLoadTest::loadRules, tblFilterData_Load})
        load();
    EXPECT_EQ(readBytes(file("Tolvek.Mdb")), archive);
}

TEST_F(TextLoadTest, OfEachTableAnUnloadOfNoRowsIsAnEmptyFileAndItsLoadEmptiesTheTable)
{
    for (const auto unLoad : {tblTolvek_UnLoad, tblSearch_Addresses_UnLoad, tblSearch_Name_UnLoad,
                              tblFriend_UnLoad, tblFilter_UnLoad, tblFilterData_UnLoad})
        unLoad();
    putMail(u"101112", u"件名");
    addFriend(u"h@x.jp", u"花子", u"もも");
    addFilter(5, 0, 0, u"一", u"a");
    putResult(u"17", u"5", u"101112");
    put(u"tblSearch_Name", {u"花子"});
    put(u"tblSearch_Addresses", {u"h@x.jp"});
    const auto left = [this] {
        return std::vector<int>{rows(u"tblTolvek"),      rows(u"tblSearch_Addresses"),
                                rows(u"tblSearch_Name"), rows(u"tblFriend"),
                                rows(u"tblFilter"),      rows(u"tblFilterData")};
    };
    std::vector<int> expected(6, 1);
    std::size_t next = 0;
    for (const auto load : {tblTolvek_Load, tblSearch_Addresses_Load, tblSearch_Name_Load,
                            tblFriend_Load, &TextLoadTest::loadRules, tblFilterData_Load}) {
        EXPECT_EQ(left(), expected);
        load();
        expected[next++] = 0;
        EXPECT_EQ(left(), expected) << "each only its own table";
    }
}

// The import never stores such a pair of mails, but a text file may contain one.
TEST_F(TextLoadTest, TwoMailsThatDifferInTheirDirectionAloneComeIn)
{
    putMail(u"101112", u"件名");
    tblTolvek_UnLoad();
    Text record = textOf("tblTolvek.Txt"), other = record;
    const std::size_t place = other.find(u"\"True\"");
    ASSERT_NE(place, Text::npos);
    other.replace(place, 6, u"\"False\"");
    givenText("tblTolvek.Txt", record + other);
    tblTolvek_Load();
    EXPECT_EQ(column(u"SELECT tblTolvek_SndRcvFlag FROM tblTolvek").size(), 2u);
}

TEST_F(TextLoadTest, AnEmptyFileEmptiesItsTable)
{
    putMail(u"101112", u"件名");
    addFriend(u"h@x.jp", u"花子", u"もも");
    tblTolvek_UnLoad();
    execute(Statement{u"DELETE FROM tblTolvek"});
    tblTolvek_UnLoad();
    putMail(u"101112", u"件名");
    EXPECT_TRUE(hasTextFiles());
    tblTolvek_Load();
    EXPECT_EQ(rows(u"tblTolvek"), 0);
    EXPECT_EQ(rows(u"tblFriend"), 1);
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(TextLoadTest, MailsComeBackAsTheyWere)
{
    const Texts awkward{u" , \r\n\r\n  、\r\n",
                        u"\n\r lone \r and \n",
                        u"　前後　",
                        u"'|#&%\\",
                        u"ｶﾞ①〓・～",
                        u"\t\0x"};
    int second = 10;
    for (const Text& text : awkward)
        putMail(u"1011" + decimal(second++), text.substr(0, 5), text);
    Texts full{u"20000301", u"000000", u"-3", u"False", u"n", u"a", u"m", u"b", u"s"};
    for (int block = 1; block <= 17; ++block) // the sixteen texts and the last field
        full.push_back(u"block " + decimal(block));
    put(u"tblTolvek", full);
    const Texts before = content(u"tblTolvek", 26);
    tblTolvek_UnLoad();
    putMail(u"235959", u"of no unload");
    tblTolvek_Load();
    EXPECT_EQ(content(u"tblTolvek", 26), before);
}

TEST_F(TextLoadTest, FriendsAndTheTablesOfSearchComeBackAsTheyWere)
{
    addFriend(u"h@x.jp", u"花子", u"", u"くま", 70000);
    addFriend(u"a@x.jp", u" 次郎,", u"はち", u"いぬ", -1);
    for (const TextView name : {u"花子", u"", u" TARO", u"ぼく"})
        put(u"tblSearch_Name", {Text(name)});
    put(u"tblSearch_Addresses", {u"h@x.jp"});
    const Texts friends = content(u"tblFriend", 5), names = content(u"tblSearch_Name", 1);
    tblFriend_UnLoad();
    tblSearch_Name_UnLoad();
    tblSearch_Addresses_UnLoad();
    addFriend(u"new@x.jp", u"n", u"n");
    put(u"tblSearch_Name", {u"new"});
    put(u"tblSearch_Addresses", {u"new"});
    tblFriend_Load();
    tblSearch_Name_Load();
    tblSearch_Addresses_Load();
    EXPECT_EQ(content(u"tblFriend", 5), friends);
    EXPECT_EQ(content(u"tblSearch_Name", 1), names);
    EXPECT_EQ(content(u"tblSearch_Addresses", 1), Texts{u"h@x.jp"});
}

TEST_F(TextLoadTest, RulesComeBackNumberedByTenAndTheirResultsDontFollow)
{
    addFilter(20, 5, 0, u"三", u"c");
    addFilter(5, 0, 0, u"一", u"a");
    addFilter(7, 1, 1, u"二", u"b");
    putResult(u"17", u"5", u"101112");
    putResult(u"3", u"20", u"090000");
    tblFilter_UnLoad();
    tblFilterData_UnLoad();
    loadRules();
    tblFilterData_Load();
    EXPECT_EQ(content(u"tblFilter", 5), (Texts{u"10", u"0", u"0", u"一", u"a", u"20", u"1", u"1",
                                               u"二", u"b", u"30", u"5", u"0", u"三", u"c"}));
    EXPECT_EQ(content(u"tblFilterData", 4),
              (Texts{u"0", u"5", u"20000215", u"101112", u"1", u"20", u"20000215", u"090000"}));
    EXPECT_EQ(column(u"SELECT tblFilterDt_SndRcvFlag FROM tblFilterData"),
              (Texts{u"False", u"False"}));
}

TEST_F(TextLoadTest, AQuoteShiftsTheFieldsOfItsRecord)
{
    putMail(u"101112", u"say \"x\"", u"text");
    tblTolvek_UnLoad();
    tblTolvek_Load();
    EXPECT_EQ(reports.take(), Reports{"tblTolvek_Load 62"}); // the last field remains unread
    EXPECT_EQ(subjects(), Texts{u"say "});
    EXPECT_EQ(value(u"SELECT tblTolvek_Mail1 FROM tblTolvek"), u"x\"\"");
    EXPECT_EQ(value(u"SELECT tblTolvek_Mail2 FROM tblTolvek"), u"text");
}

TEST_F(TextLoadTest, FilesOfOtherHandsAreReadByTheirItems)
{
    givenText("TBLFRIEND.TXT", u"  くま , もも,花子 ,h@x.jp, 12 \r\n\"a\"\r\n\"b\",\"\","
                               u"\"a@x.jp\"\r\n");
    tblFriend_Load();
    EXPECT_EQ(reports.take(), Reports{"tblFriend_Load 62"}); // the second record lacks its number
    EXPECT_EQ(content(u"tblFriend", 5), (Texts{u"くま", u"もも", u"花子", u"h@x.jp", u"12"}));
}

TEST_F(TextLoadTest, ARecordThatCantBeStoredKeepsThoseBeforeIt)
{
    struct Case {
        Text second;
        const char* report;
    };
    const Case cases[] = {
        {u"\"\",\"\",\"\",\"A@X.JP\",1\r\n", "tblFriend_Load 3022"},
        {u"\"\",\"\",\"\",\"\",1\r\n", "tblFriend_Load 3315"},
        {u"\"\",\"\",\"\",\"" + Text(65, u'b') + u"\",1\r\n", "tblFriend_Load 3163"},
        {u"\"\",\"\",\"\",\"b@x.jp\",2147483648\r\n", "tblFriend_Load 6"},
    };
    for (const Case& c : cases) {
        execute(Statement{u"DELETE FROM tblFriend"});
        addFriend(u"old@x.jp", u"n", u"n");
        givenText("tblFriend.Txt", u"\"\",\"\",\"\",\"a@x.jp\",1\r\n" + c.second +
                                       u"\"\",\"\",\"\",\"c@x.jp\",1\r\n");
        tblFriend_Load();
        EXPECT_EQ(reports.take(), Reports{c.report});
        EXPECT_EQ(column(u"SELECT tblFriend_Address FROM tblFriend"), Texts{u"a@x.jp"});
        EXPECT_FALSE(gDb.isOpen());
        EXPECT_EQ(freeFile(), 1) << "the text file is closed";
    }
}

TEST_F(TextLoadTest, ALoadYieldsOnceAndAtEachRecord)
{
    for (const int count : {0, 3}) {
        Text records;
        for (int i = 0; i < count; ++i)
            records += u"\"" + decimal(i) + u"\"\r\n";
        givenText("tblSearch_Addr.Txt", records);
        EXPECT_EQ(yieldsOf(tblSearch_Addresses_Load), 1 + count);
    }
}

}
}
