#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/subject_list.h"
#include "filter/filter_rules.h"
#include "store/subject_keys.h"
#include "support/window_fixture.h"
#include "support/yield_watch.h"

namespace tolvek::test {
namespace {

class SubjectListTest : public WindowFixture {
protected:
    std::vector<Text> subjects() const
    {
        std::vector<Text> found;
        for (const Text& row : entries(*form.lstSubject))
            found.push_back(row.substr(row.rfind(u' ') + 1));
        return found;
    }

    static void storeResult(int id, int rule, const Mail& m)
    {
        Statement sql{
            u"INSERT INTO tblFilterData ( tblFilterDt_Id, tblFilterDt_No, tblFilterDt_Date, "
            u"tblFilterDt_Time, tblFilterDt_SubKey, tblFilterDt_SendName, tblFilterDt_SendAddr, "
            u"tblFilterDt_RecvName, tblFilterDt_RecvAddr, tblFilterDt_SndRcvFlag, "
            u"tblFilterDt_Subject ) VALUES( "};
        sql << id << u", " << rule << u", '" << m.YMD << u"', '" << m.HMS << u"', " << m.SubKey
            << u", '" << m.SndName << u"', '" << m.SndAdd << u"', '" << m.RcvName << u"', '"
            << m.RcvAdd << u"', " << m.SndRcvFlag << u", '" << m.Subject << u"' )";
        execute(sql);
    }
};

TEST_F(SubjectListTest, AnAddressListsItsMailsOfBothDirectionsByTime)
{
    store(mail(u"a@x.jp", u"me@x.jp", u"三", u"20000302"));
    store(mail(u"me@x.jp", u"A@x.jp", u"二", u"20000301", u"235959"));
    store(mail(u"a@x.jp", u"me@x.jp", u"一", u"20000301", u"000000"));
    store(mail(u"other@x.jp", u"me@x.jp", u"外", u"20000301"));
    dspSubject(form, u"a@x.jp");
    EXPECT_EQ(subjects(), (std::vector<Text>{u"一", u"二", u"三"}));
}

TEST_F(SubjectListTest, ANameListSortsBySubKeyBeforeTime)
{
    Mail late = mail(u"a@x.jp", u"b@x.jp", u"先", u"20000301", u"120000");
    Mail early = mail(u"a@x.jp", u"b@x.jp", u"後", u"20000301", u"080000");
    early.SubKey = 1;
    late.SndName = early.SndName = u"花";
    store(late);
    store(early);
    gDisplayType = 1;
    dspSubject(form, u"花");
    EXPECT_EQ(subjects(), (std::vector<Text>{u"先", u"後"}));
    gDisplayType = 0;
    dspSubject(form, u"a@x.jp");
    EXPECT_EQ(subjects(), (std::vector<Text>{u"後", u"先"}));
}

TEST_F(SubjectListTest, AnyOtherDisplayTypeListsADate)
{
    store(mail(u"a@x.jp", u"b@x.jp", u"午後", u"20000301", u"130000"));
    store(mail(u"c@x.jp", u"b@x.jp", u"午前", u"20000301", u"090000"));
    store(mail(u"c@x.jp", u"b@x.jp", u"翌日", u"20000302"));
    for (int type : {2, 7, -1}) {
        gDisplayType = type;
        dspSubject(form, u"20000301");
        EXPECT_EQ(subjects(), (std::vector<Text>{u"午前", u"午後"})) << type;
    }
}

TEST_F(SubjectListTest, AnEmptyKeyFindsNothingAndEmptiesListAndLabel)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    for (int type : {0, 1, 2}) {
        gDisplayType = type;
        form.lblRecCount->setCaption(u"x");
        dspSubject(form, u"");
        EXPECT_EQ(form.lstSubject->ListCount(), 0);
        EXPECT_EQ(form.lblRecCount->Caption(), u"");
    }
}

TEST_F(SubjectListTest, TheCountIsFullWidthHereAndHalfWidthOnceAMailIsSelected)
{
    for (int i = 0; i < 12; ++i)
        store(mail(u"a@x.jp", u"b@x.jp", u"件", u"200003" + decimal(10 + i)));
    dspSubject(form, u"a@x.jp");
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　１２ 件");
    form.lstSubject->setListIndex(0);
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　1 / 12 件");
}

TEST_F(SubjectListTest, ASingleQuoteInTheKeyFailsTheStatementAndIsTold)
{
    boxes.expect(u"エラー番号： 3075\r\n（クエリ式 '" +
                     Text(u"( tblTolvek_SndAdd = 'o'hara' ) or (tblTolvek_RcvAdd = "
                          u"'o'hara' ) ORDER By  tblTolvek_YMD ASC,  tblTolvek_HMS ASC,  "
                          u"tblTolvek_SubKey ASC") +
                     u"' の 構文エラー : 演算子がありません。）",
                 MsgAnswer::Ok, u"エラーメッセージ (dspSubject)");
    dspSubject(form, u"o'hara");
    EXPECT_FALSE(gDb.isOpen());
}

TEST_F(SubjectListTest, RowsBehindTheFirstBlockLeaveTheirDirectionInTheFirst)
{
    storeMany(kSubjectBlock + 2, u"a@x.jp");
    dspSubject(form, u"a@x.jp");
    EXPECT_EQ(form.lstSubject->ListCount(), kSubjectBlock + 2);
    EXPECT_EQ(gSubjectKeyCnt1, kSubjectBlock);
    EXPECT_EQ(gSubjectKeyCnt2, 2);
    EXPECT_EQ(SubjectRowLocate(kSubjectBlock).SubKey, kSubjectBlock);
    // Rows 10240 and 10241 are received and sent, like rows 0 and 1.
    EXPECT_FALSE(gSubjectKey1[0].SndRcvFlag);
    EXPECT_TRUE(gSubjectKey1[1].SndRcvFlag);
    EXPECT_FALSE(gSubjectKey2[1].SndRcvFlag);
}

TEST_F(SubjectListTest, MoreRowsThanSixteenBitsCountAreToldTwiceAndNoMailIsHarmed)
{
    storeMany(32767, u"a@x.jp");
    store(mail(u"a@x.jp", u"c@example.jp"));
    expectDbReport(u"GET_RECCNT", 6);
    expectDbReport(u"dspSubject", 3420);
    dspSubject(form, u"a@x.jp");
    EXPECT_EQ(form.lstSubject->ListCount(), 0);
    EXPECT_EQ(gSubjectCount, 32767);
    EXPECT_EQ(rows(u"tblTolvek"), 32768);
}

// More rows than can be counted: only reachable with blocks filled by hand.
TEST_F(SubjectListTest, TheLastRowThatTheBlocksHoldIsListedAndTheLimitIsReported)
{
    storeMany(3, u"a@x.jp");
    gFilterRule[0].No = 10;
    for (const int id : {1, 2, 3})
        storeResult(id, 10, mail(u"a@x.jp", u"b@x.jp"));
    QObject::connect(form.lstSubject->model(), &QAbstractItemModel::rowsInserted, [] {
        gSubjectKeyCnt1 = gSubjectKeyCnt2 = gSubjectKeyCnt3 = kSubjectBlock;
        gSubjectKeyCnt4 = std::max<int>(gSubjectKeyCnt4, kSubjectBlock - 2);
    });
    const std::function<void()> fills[] = {[&] { dspSubject(form, u"a@x.jp"); },
                                           [&] { dspSubject_Filter(form, 0); }};
    for (const auto& fill : fills) {
        boxes.expect(u"ＤＢに保存しているＭａｉｌが限界値を超えました。\r\n"
                     u"Tolvek.Mdb を ＢａｃｋＵｐして、ＤＢの再作成をして下さい。",
                     MsgAnswer::Ok, u"Tolvek");
        fill();
        EXPECT_EQ(form.lstSubject->ListCount(), 2);
        EXPECT_FALSE(gDb.isOpen());
    }
}

TEST_F(SubjectListTest, AFilterViewListsTheResultsOfItsRuleByInstant)
{
    gFilterRule[3].No = 40;
    Mail second = mail(u"a@x.jp", u"b@x.jp", u"二", u"20000301", u"120000");
    second.SndRcvFlag = true;
    storeResult(1, 40, second);
    storeResult(2, 40, mail(u"a@x.jp", u"b@x.jp", u"一", u"20000301", u"080000"));
    storeResult(3, 50, mail(u"a@x.jp", u"b@x.jp", u"外"));
    gDisplayType = 3;
    dspSubject_Filter(form, 3);
    EXPECT_EQ(subjects(), (std::vector<Text>{u"一", u"二"}));
    EXPECT_EQ(SubjectRowLocate(0).SndAdd, u"a@x.jp");
    EXPECT_TRUE(SubjectRowLocate(1).SndRcvFlag);
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　２ 件");
}

TEST_F(SubjectListTest, AFilterIndexOutsideTheTableIsTold)
{
    for (int index : {-1, 256}) {
        expectDbReport(u"dspSubject_Filter", 9);
        dspSubject_Filter(form, index);
    }
}

TEST_F(SubjectListTest, AFilterRowWhoseMailIsGoneShowsNothing)
{
    gFilterRule[0].No = 10;
    storeResult(1, 10, mail(u"a@x.jp", u"b@x.jp"));
    dspSubject_Filter(form, 0);
    form.lstSubject->setListIndex(0);
    EXPECT_EQ(form.txtMail->Text(), u"");
    EXPECT_EQ(form.lblHead->Caption(), u"");
    EXPECT_EQ(form.lblRecCount->Caption(), u"表示件数　：　１ 件");
}

TEST_F(SubjectListTest, TheCommandsComeBackBehindAClickOnARow)
{
    store(mail(u"a@x.jp", u"b@x.jp"));
    dspSubject(form, u"a@x.jp");
    form.lstSubject->setListIndex(0);
    EXPECT_TRUE(form.comMailRead->Enabled());
    gBackUpDisp = 1;
    form.lstSubject->setListIndex(0);
    EXPECT_FALSE(form.comMailRead->Enabled());
    EXPECT_TRUE(form.lstSubject->Enabled());
}

TEST_F(SubjectListTest, TheListYieldsAtEachRowThatIsCountedAndOnceAtItsEnd)
{
    gFilterRule[0].No = 10;
    const std::function<void()> fills[] = {[&] { dspSubject(form, u"a@x.jp"); },
                                           [&] { dspSubject_Filter(form, 0); }};
    for (const auto& fill : fills)
        EXPECT_EQ(yieldsOf(fill), 0);
    storeMany(3, u"a@x.jp");
    for (const int id : {1, 2, 3})
        storeResult(id, 10, mail(u"a@x.jp", u"b@x.jp"));
    for (const auto& fill : fills)
        EXPECT_EQ(yieldsOf(fill), 3 + 1);
}

}
}
