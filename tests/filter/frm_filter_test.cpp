#include "filter/frm_filter.h"
#include "frm_filter_fixture.h"
#include "platform/forms/screen.h"

namespace tolvek::test {
namespace {

const TextView kNoTitle = u"表示タイトルを入力して下さい。";
const TextView kNoTerms = u"ルールを１っ選んでください。";
const TextView kNoAct = u"アクションを１っ選んでください。";
const TextView kNoData = u"フィルター条件を入力して下さい。";
const TextView kSpecial = u"特殊文字 ' と | は使用できません。";

// ---- opening ----

TEST_F(FrmFilterTest, OpensOnTheStoredRulesWithAnEmptyEditArea)
{
    addFilter(10, 3, 1, u"後", u"b");
    addFilter(20, 5, 0, u"先", u"a");
    gFilterRuleCnt = 77; // any old value
    atEditor([&] {
        EXPECT_EQ(
            cells(*editor.grdFilter, 0),
            (std::vector<Text>{u"表示タイトル", u"ルール", u"アクション", u"フィルター条件"}));
        EXPECT_EQ(cells(*editor.grdFilter, 1), (std::vector<Text>{u"先", u"5", u"0", u"a"}));
        EXPECT_EQ(cells(*editor.grdFilter, 2), (std::vector<Text>{u"後", u"3", u"1", u"b"}));
        EXPECT_EQ(editor.grdFilter->Rows(), 3);
        expectAreaEmpty();
        cancel();
    });
}

TEST_F(FrmFilterTest, HasItsSizeItsWordsAndItsPlace)
{
    const Text terms[] = {u"（０） Ｓｕｂｊｅｃｔ と 完全に一致",
                          u"（１） Ｓｕｂｊｅｃｔ に 含まれる",
                          u"（２） 送受信アドレスのどちらかと完全に一致",
                          u"（３） 送受信アドレスのどちらかに含まれる",
                          u"（４） 送受信者名がどちらかと完全に一致",
                          u"（5） 送受信者名に含まれる"};
    atEditor([&] {
        EXPECT_EQ(editor.Caption(), u"フィルター設定");
        EXPECT_EQ(editor.Height(), 9375);
        EXPECT_EQ(editor.Width(), 8745);
        EXPECT_NEAR(editor.Left(), (Screen::Width() - 8745) / 2, 1);
        EXPECT_NEAR(editor.Top(), (Screen::Height() - 9375) / 2, 1);
        EXPECT_EQ(editor.Label1->Caption(), u"表示タイトル");
        EXPECT_EQ(editor.Label2->Caption(), u"フィルター条件");
        EXPECT_EQ(editor.Frame1->Caption(), u"条　件");
        EXPECT_EQ(editor.Frame2->Caption(), u"ルール");
        EXPECT_EQ(editor.Frame3->Caption(), u"アクション");
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(editor.optTerms[i]->Caption(), terms[i]);
        EXPECT_EQ(editor.optAct[0]->Caption(), u"（０）振り分ける");
        EXPECT_EQ(editor.optAct[1]->Caption(), u"（１）メールを読み込まない");
        EXPECT_EQ(editor.comAdd->Caption(), u"追　加");
        EXPECT_EQ(editor.comUp->Caption(), u"変　更");
        EXPECT_EQ(editor.comDel->Caption(), u"削　除");
        EXPECT_EQ(editor.cmdDspChenge->Caption(), u"表示順変更");
        EXPECT_EQ(editor.cmdDspChenge->ToolTipText(), u"ﾌｨﾙﾀｰ表示の順番を変更します");
        EXPECT_EQ(editor.comOk->Caption(), u"Ｏ　Ｋ");
        EXPECT_EQ(editor.comCancel->Caption(), u"キャンセル");
        const float widths[] = {2500, 900, 900, 3500};
        for (int col = 0; col < 4; ++col)
            EXPECT_EQ(editor.grdFilter->ColWidth(col), widths[col]);
        cancel();
    });
}

TEST_F(FrmFilterTest, NoControlIsCutOrCoveredAndAllColumnsShow)
{
    givenMany(60);
    atEditor([&] {
        std::vector<QWidget*> parts = {
            editor.Frame1,       editor.Label1,    editor.txtFilterHeader, editor.Frame2,
            editor.Frame3,       editor.Label2,    editor.txtTerms,        editor.comAdd,
            editor.comUp,        editor.comDel,    editor.grdFilter,       editor.comOk,
            editor.cmdDspChenge, editor.comCancel,
        };
        for (OptionButton* option : editor.optTerms) {
            parts.push_back(option);
            EXPECT_GE(option->width(), option->sizeHint().width()) << toUtf8(option->Caption());
        }
        for (OptionButton* option : editor.optAct) {
            parts.push_back(option);
            EXPECT_GE(option->width(), option->sizeHint().width()) << toUtf8(option->Caption());
        }
        expectApart(parts);
        const QRect last = editor.grdFilter->cellRect(1, 3);
        EXPECT_LE(last.right(), editor.grdFilter->viewport()->width());
        cancel();
    });
}

TEST_F(FrmFilterTest, TabGoesInTheOrderInWhichARuleIsMade)
{
    atEditor([&] {
        std::vector<QWidget*> way = {editor.txtFilterHeader};
        way.insert(way.end(), editor.optTerms.begin(), editor.optTerms.end());
        way.insert(way.end(), editor.optAct.begin(), editor.optAct.end());
        way.insert(way.end(),
                   {editor.txtTerms, editor.comAdd, editor.comUp, editor.comDel, editor.grdFilter,
                    editor.cmdDspChenge, editor.comOk, editor.comCancel});
        expectTabWay(editor.window(), way);
        cancel();
    });
}

// ---- adding ----

TEST_F(FrmFilterTest, AddingWithAnUntouchedEditAreaDoesNothingAndShowsNothing)
{
    atEditor([&] {
        click(*editor.comAdd);
        EXPECT_EQ(gFilterRuleCnt, 0);
        cancel();
    });
}

TEST_F(FrmFilterTest, WithOnlyAnOptionButtonSetTheTitleIsAskedFor)
{
    boxes.expect(kNoTitle, MsgAnswer::Ok, u"Tolvek");
    atEditor([&] {
        click(*editor.optTerms[2]);
        click(*editor.comAdd);
        EXPECT_TRUE(editor.txtFilterHeader->HasFocus());
        EXPECT_EQ(setIn(editor.optTerms), 2);
        EXPECT_EQ(gFilterRuleCnt, 0);
        cancel();
    });
}

TEST_F(FrmFilterTest, ATitleOfBlanksCountsAsEmptyAndIsCleared)
{
    boxes.expect(kNoTitle, MsgAnswer::Ok, u"Tolvek");
    atEditor([&] {
        add(u" 　 ");
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"");
        EXPECT_TRUE(editor.txtFilterHeader->HasFocus());
        EXPECT_EQ(editor.txtTerms->Text(), u"x");
        cancel();
    });
}

TEST_F(FrmFilterTest, WhatIsMissingIsAskedForInTurn)
{
    boxes.expect(kNoTerms, MsgAnswer::Ok, u"Tolvek");
    boxes.expect(kNoAct, MsgAnswer::Ok, u"Tolvek");
    boxes.expect(kNoData, MsgAnswer::Ok, u"Tolvek");
    atEditor([&] {
        add(u"title", -1, -1, u"　");
        click(*editor.optTerms[1]);
        click(*editor.comAdd);
        click(*editor.optAct[0]);
        click(*editor.comAdd);
        EXPECT_EQ(editor.txtTerms->Text(), u"");
        EXPECT_TRUE(editor.txtTerms->HasFocus());
        EXPECT_EQ(gFilterRuleCnt, 0);
        cancel();
    });
}

TEST_F(FrmFilterTest, SpecialCharactersAreRefusedInAllTheirForms)
{
    const Text specials[] = {u"a'b", u"a|b", u"ａ｜ｂ", u"a＇b"};
    for (int i = 0; i < 8; ++i)
        boxes.expect(kSpecial, MsgAnswer::Ok, u"Tolvek");
    atEditor([&] {
        for (const Text& special : specials) {
            add(special, 0, 0, u"x");
            EXPECT_EQ(editor.txtFilterHeader->Text(), special)
                << "kept, so that the user can correct it";
            add(u"title", 0, 0, special);
        }
        EXPECT_EQ(gFilterRuleCnt, 0);
        cancel();
    });
}

TEST_F(FrmFilterTest, ANewRuleStandsLastAsTypedInTheGridAndTrimmedInMemory)
{
    givenSorting({u"A"});
    givenNotRead({u"N"}, 20);
    atEditor([&] {
        add(u" 新しい　", 4, 0, u" 花子 ");
        EXPECT_EQ(cells(*editor.grdFilter, 3),
                  (std::vector<Text>{u" 新しい　", u"4", u"0", u" 花子 "}));
        EXPECT_EQ(gFilterRuleCnt, 3);
        EXPECT_EQ(gFilterRule[2].No, 0);
        EXPECT_EQ(gFilterRule[2].TermsCode, 4);
        EXPECT_EQ(gFilterRule[2].ActionCode, 0);
        EXPECT_EQ(gFilterRule[2].Header, u"新しい");
        EXPECT_EQ(gFilterRule[2].Data, u"花子");
        expectAreaEmpty();
        EXPECT_TRUE(editor.txtFilterHeader->HasFocus());
        ok();
    });
    tblFilter_UpDate();
    EXPECT_EQ(gFilterRule[1].Header, u"新しい") << "sorted into its group by the load";
    EXPECT_EQ(gFilterRule[2].Header, u"N");
}

TEST_F(FrmFilterTest, AddingWithARowChosenLeavesThatRow)
{
    givenSorting({u"A"});
    atEditor([&] {
        pick(1);
        editor.txtFilterHeader->setText(u"B");
        click(*editor.comAdd);
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"A", u"B"}));
        EXPECT_EQ(gFilterRule[1].Data, u"A-data");
        click(*editor.comUp); // no row is selected any more
        EXPECT_EQ(gFilterRule[0].Header, u"A");
        cancel();
    });
}

TEST_F(FrmFilterTest, ARuleBeyondTheTableEndsTheProgram)
{
    givenMany(255);
    expectUntrapped(9);
    const ModalScript script("frmFilter", [&](QWidget&) {
        add(u"256th");
        EXPECT_EQ(gFilterRule[255].Header, u"256th");
        enter(u"257th", 0, 0, u"x");
        editor.comAdd->click();
        EXPECT_EQ(gFilterRuleCnt, 257);
        EXPECT_EQ(editor.grdFilter->Rows(), 258);
        EXPECT_EQ(editor.grdFilter->TextMatrix(257, 0), u"257th");
    });
    EXPECT_THROW(editor.ShowModal(), ProgramEnd);
}

// ---- choosing ----

TEST_F(FrmFilterTest, AClickLoadsTheRow)
{
    addFilter(10, 3, 0, u"A", u"a@example.jp");
    addFilter(20, 0, 1, u"B", u"b");
    atEditor([&] {
        pick(2);
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"B");
        EXPECT_EQ(setIn(editor.optTerms), 0);
        EXPECT_EQ(setIn(editor.optAct), 1);
        EXPECT_EQ(editor.txtTerms->Text(), u"b");
        pick(1);
        EXPECT_EQ(setIn(editor.optTerms), 3);
        EXPECT_FALSE(editor.optTerms[0]->Value()) << "one of them alone is set";
        EXPECT_EQ(setIn(editor.optAct), 0);
        EXPECT_EQ(editor.txtTerms->Text(), u"a@example.jp");
        cancel();
    });
}

TEST_F(FrmFilterTest, ARuleWithoutAnOptionButtonEndsTheProgram)
{
    addFilter(10, 6, 0, u"A", u"a");
    expectUntrapped(340);
    const ModalScript script("frmFilter", [&](QWidget&) {
        QTest::mouseClick(editor.grdFilter->viewport(), Qt::LeftButton, {},
                          editor.grdFilter->cellRect(1, 0).center());
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"A");
    });
    EXPECT_THROW(editor.ShowModal(), ProgramEnd);
}

// ---- changing ----

TEST_F(FrmFilterTest, AChangeWritesTheChosenRow)
{
    givenSorting({u"A", u"B", u"C"});
    atEditor([&] {
        pick(2);
        editor.txtFilterHeader->setText(u"B2 ");
        click(*editor.optTerms[5]);
        click(*editor.comUp);
        EXPECT_EQ(cells(*editor.grdFilter, 2), (std::vector<Text>{u"B2 ", u"5", u"0", u"B-data"}));
        EXPECT_EQ(gFilterRule[1].Header, u"B2");
        EXPECT_EQ(gFilterRule[1].No, 0);
        EXPECT_EQ(gFilterRuleCnt, 3);
        expectAreaEmpty();
        ok();
    });
}

TEST_F(FrmFilterTest, WithoutAChosenRowNothingIsChangedOrAsked)
{
    givenSorting({u"A"});
    atEditor([&] {
        click(*editor.optTerms[1]);
        click(*editor.comUp);
        EXPECT_EQ(gFilterRule[0].Header, u"A");
        cancel();
    });
}

TEST_F(FrmFilterTest, AChangeIsCheckedLikeANewRule)
{
    givenSorting({u"A"});
    boxes.expect(kSpecial, MsgAnswer::Ok, u"Tolvek");
    atEditor([&] {
        pick(1);
        editor.txtTerms->setText(u"it's");
        click(*editor.comUp);
        EXPECT_EQ(gFilterRule[0].Data, u"A-data");
        editor.txtTerms->setText(u"its");
        click(*editor.comUp); // the row is still selected
        EXPECT_EQ(gFilterRule[0].Data, u"its");
        ok();
    });
}

TEST_F(FrmFilterTest, ARuleThatBeginsToSortMovesToItsGroupAtTheReload)
{
    givenSorting({u"A"});
    givenNotRead({u"M", u"N"}, 20);
    atEditor([&] {
        pick(3);
        click(*editor.optAct[0]);
        click(*editor.comUp);
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"A", u"M", u"N"}));
        ok();
    });
    tblFilter_UpDate();
    EXPECT_EQ(gFilterRule[1].Header, u"N");
    EXPECT_EQ(gFilterRule[2].Header, u"M");
}

TEST_F(FrmFilterTest, AChangeOfADeletedRowRevivesIt)
{
    givenSorting({u"A", u"B"});
    atEditor([&] {
        pick(1);
        click(*editor.comDel);
        pick(1);
        expectAreaEmpty();
        enter(u"again", 1, 0, u"y");
        click(*editor.comUp);
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"again", u"B"}));
        ok();
    });
    tblFilter_UpDate();
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"again", u"B"}));
}

TEST_F(FrmFilterTest, WithoutRulesAChangeWritesOneThatIsntStored)
{
    atEditor([&] {
        pick(1);
        enter(u"lost", 0, 0, u"x");
        click(*editor.comUp);
        EXPECT_EQ(titles(*editor.grdFilter), std::vector<Text>{u"lost"});
        EXPECT_EQ(gFilterRuleCnt, 0);
        ok();
    });
    tblFilter_UpDate();
    EXPECT_TRUE(storedTitles().empty());
}

// ---- deleting ----

TEST_F(FrmFilterTest, TheDeletedMiddleOneLeavesABlankRowAndAGapInTheNumbers)
{
    givenSorting({u"A", u"B", u"C"});
    atEditor([&] {
        pick(2);
        click(*editor.comDel);
        EXPECT_EQ(cells(*editor.grdFilter, 2), std::vector<Text>(4));
        EXPECT_EQ(editor.grdFilter->Rows(), 4);
        EXPECT_EQ(gFilterRuleCnt, 3);
        EXPECT_EQ(gFilterRule[1].No, 9999);
        EXPECT_EQ(gFilterRule[1].TermsCode, 99);
        EXPECT_EQ(gFilterRule[1].ActionCode, 99);
        expectAreaEmpty();
        ok();
    });
    tblFilter_UpDate();
    EXPECT_EQ(storedTitles(), (std::vector<Text>{u"A", u"C"}));
    EXPECT_EQ(storedNumbers(), (std::vector<Text>{u"10", u"30"}));
}

TEST_F(FrmFilterTest, ABlankRowIsDeletedAgainOnlyWithATitleInTheBox)
{
    givenSorting({u"A", u"B"});
    atEditor([&] {
        pick(1);
        click(*editor.comDel);
        pick(1);
        gFilterRule[0].Data = u"mark";
        click(*editor.comDel);
        EXPECT_EQ(gFilterRule[0].Data, u"mark") << "the title box is empty";
        editor.txtFilterHeader->setText(u"anything");
        click(*editor.comDel);
        EXPECT_EQ(gFilterRule[0].Data, u"");
        EXPECT_EQ(titles(*editor.grdFilter), (std::vector<Text>{u"", u"B"}));
        expectAreaEmpty();
        cancel();
    });
}

TEST_F(FrmFilterTest, ATitleWithoutAChosenRowDeletesNothing)
{
    givenSorting({u"A"});
    atEditor([&] {
        editor.txtFilterHeader->setText(u"A");
        click(*editor.comDel);
        EXPECT_EQ(gFilterRule[0].Header, u"A");
        EXPECT_EQ(editor.txtFilterHeader->Text(), u"A");
        cancel();
    });
}

}
}
