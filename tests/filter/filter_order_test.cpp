#include "filter/filter_order.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tolvek::test {
namespace {

class FilterOrderTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        gFilterRule = {};
        gFilterRuleCnt = 0;
    }
    void TearDown() override { SetUp(); }

    static void given(const Text& header, int terms, int action)
    {
        gFilterRule[gFilterRuleCnt] = {gFilterRuleCnt + 1, terms, action, header,
                                       header + u"-data"};
        ++gFilterRuleCnt;
    }
    void move(int row)
    {
        order.BeforeRow = row;
        if (order.canMoveOne()) order.moveOne(show());
    }
    FilterOrder::ShowRow show()
    {
        return [this](Int16 row, const FilterRule& rule) { shown.emplace_back(row, rule); };
    }
    std::vector<Text> newTitles() const
    {
        std::vector<Text> titles;
        for (int i = 0; i < order.AfterRow - 1; ++i)
            titles.push_back(order.FilterAfter[i].Header);
        return titles;
    }

    std::vector<std::pair<int, FilterRule>> shown;
    FilterOrder order;
};

TEST_F(FilterOrderTest, TheResetReachesOneEntryBehindTheLastRule)
{
    given(u"A", 0, 0);
    order.FilterBefore[1].Header = order.FilterAfter[1].Header = u"old";
    order.FilterBefore[2].Header = order.FilterAfter[2].Header = u"old";
    order.reset();
    EXPECT_EQ(order.FilterBefore[0].Header, u"A");
    EXPECT_EQ(order.FilterBefore[1].Header, u"");
    EXPECT_EQ(order.FilterAfter[1].Header, u"");
    EXPECT_EQ(order.FilterBefore[2].Header, u"old");
    EXPECT_EQ(order.FilterAfter[2].Header, u"old");
}

TEST_F(FilterOrderTest, WithAsManyRulesAsTheTableHoldsTheResetLeavesIt)
{
    for (int n = 0; n < 255; ++n)
        given(u"r", 0, 0);
    EXPECT_NO_THROW(order.reset());
    given(u"r", 0, 0);
    try {
        order.reset();
        FAIL() << "no error";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), 9);
    }
}

TEST_F(FilterOrderTest, ASingleMoveTakesTheWholeRuleAndBlanksItsOldEntry)
{
    given(u"A", 0, 0);
    given(u"B", 3, 0);
    order.reset();
    move(2);
    EXPECT_EQ(order.FilterAfter[0].No, 2);
    EXPECT_EQ(order.FilterAfter[0].TermsCode, 3);
    EXPECT_EQ(order.FilterAfter[0].Data, u"B-data");
    EXPECT_EQ(order.FilterBefore[1].No, 9999);
    EXPECT_EQ(order.FilterBefore[1].Data, u"");
    EXPECT_EQ(order.AfterRow, 2);
}

TEST_F(FilterOrderTest, NothingMovesWithoutARowOrASecondTime)
{
    given(u"A", 0, 0);
    order.reset();
    move(0);
    EXPECT_EQ(order.AfterRow, 1);
    move(1);
    move(1);
    EXPECT_EQ(newTitles(), std::vector<Text>{u"A"});
}

TEST_F(FilterOrderTest, BesideTheTitleStandsTheOldEntryAtTheNewPosition)
{
    given(u"A", 1, 0);
    given(u"B", 2, 0);
    given(u"C", 3, 0);
    order.reset();
    for (const int row : {3, 1, 2})
        move(row);
    ASSERT_EQ(shown.size(), 3u);
    const Text titles[] = {u"C", u"A", u"B"};
    const int codes[] = {1, 2, 99};
    const Text data[] = {u"A-data", u"B-data", u""};
    for (std::size_t i = 0; i < shown.size(); ++i) {
        EXPECT_EQ(shown[i].first, int(i) + 1);
        EXPECT_EQ(shown[i].second.Header, titles[i]);
        EXPECT_EQ(shown[i].second.TermsCode, codes[i]);
        EXPECT_EQ(shown[i].second.Data, data[i]);
    }
    EXPECT_EQ(newTitles(), (std::vector<Text>{u"C", u"A", u"B"}));
}

TEST_F(FilterOrderTest, AllTheRestFollowsInListOrder)
{
    for (const Text& title : {Text(u"A"), Text(u"B"), Text(u"C")})
        given(title, 0, 0);
    order.reset();
    move(2);
    shown.clear();
    order.moveAll(show());
    EXPECT_EQ(newTitles(), (std::vector<Text>{u"B", u"A", u"C"}));
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].first, 2);
    EXPECT_EQ(shown[0].second.Header, u"A");
    EXPECT_EQ(shown[0].second.Data, u"A-data") << "here the rule's own";
    EXPECT_EQ(shown[1].first, 3);
}

TEST_F(FilterOrderTest, RulesThatDontSortAreCopiedUnseenAtEachCall)
{
    given(u"A", 0, 0);
    given(u"N", 0, 1);
    order.reset();
    order.moveAll(show());
    order.moveAll(show());
    EXPECT_EQ(shown.size(), 1u);
    EXPECT_EQ(newTitles(), (std::vector<Text>{u"A", u"N", u"N"}));
    EXPECT_EQ(order.FilterBefore[1].Header, u"N");
}

TEST_F(FilterOrderTest, AsManyEntriesAreReplacedAsTold)
{
    for (const Text& title : {Text(u"A"), Text(u"B"), Text(u"C"), Text(u"D")})
        given(title, 0, 0);
    order.reset();
    move(4);
    order.take(2);
    EXPECT_EQ(gFilterRule[0].Header, u"D");
    EXPECT_EQ(gFilterRule[1].Header, u"");
    EXPECT_EQ(gFilterRule[2].Header, u"");
    EXPECT_EQ(gFilterRule[3].Header, u"D");
    EXPECT_THROW(order.take(256), RuntimeError);
}

}
}
