#include "filter/filter_edit_area.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

struct FaultCase {
    const char* story;
    FilterEditArea area;
    EditFault fault;
};

TEST(FilterEditAreaTest, TheFirstFaultIsTheOneThatCounts)
{
    const FaultCase table[] = {
        {"untouched", {u"", kNoneSet, kNoneSet, u""}, EditFault::Untouched},
        {"blanks alone are untouched", {u" 　", kNoneSet, kNoneSet, u"　 "}, EditFault::Untouched},
        {"only a rule set", {u"", 3, kNoneSet, u""}, EditFault::Header},
        {"only an action set", {u"", kNoneSet, 0, u""}, EditFault::Header},
        {"only a condition", {u"", kNoneSet, kNoneSet, u"x"}, EditFault::Header},
        {"a blank title", {u"　 ", 0, 0, u"x"}, EditFault::Header},
        {"only a title", {u"t", kNoneSet, kNoneSet, u""}, EditFault::Terms},
        {"no rule, but a special title", {u"|", kNoneSet, 0, u""}, EditFault::Terms},
        {"no action", {u"t", 0, kNoneSet, u""}, EditFault::Action},
        {"no condition", {u"t", 0, 0, u" "}, EditFault::Data},
        {"a bar in the title", {u"a|b", 0, 0, u"x"}, EditFault::Special},
        {"a quote in the title", {u"it's", 0, 0, u"x"}, EditFault::Special},
        {"a bar in the condition", {u"t", 0, 0, u"a|b"}, EditFault::Special},
        {"a quote in the condition", {u"t", 0, 0, u"it's"}, EditFault::Special},
        {"a full-width bar", {u"ａ｜ｂ", 0, 0, u"x"}, EditFault::Special},
        {"a full-width quote", {u"t", 0, 0, u"it＇s"}, EditFault::Special},
        {"a typographic quote is another character", {u"it’s", 5, 1, u"it’s"}, EditFault::None},
        {"a whole rule", {u"t", 0, 0, u"x"}, EditFault::None},
    };
    for (const FaultCase& row : table)
        EXPECT_EQ(editFault(row.area), row.fault) << row.story;
}

TEST(FilterEditAreaTest, EachFaultHasItsWords)
{
    const std::pair<EditFault, TextView> table[] = {
        {EditFault::None, u""},
        {EditFault::Untouched, u""},
        {EditFault::Header, u"表示タイトルを入力して下さい。"},
        {EditFault::Terms, u"ルールを１っ選んでください。"},
        {EditFault::Action, u"アクションを１っ選んでください。"},
        {EditFault::Data, u"フィルター条件を入力して下さい。"},
        {EditFault::Special, u"特殊文字 ' と | は使用できません。"},
    };
    for (const auto& [fault, words] : table)
        EXPECT_EQ(faultMessage(fault), words);
}

TEST(FilterEditAreaTest, AChangeNamesTheArrayWithoutAButtonSet)
{
    EXPECT_EQ(missingChoice({u"t", kNoneSet, kNoneSet, u"x"}), u"ルールを選択してください");
    EXPECT_EQ(missingChoice({u"t", 0, kNoneSet, u"x"}), u"アクションを選択してください");
    EXPECT_EQ(missingChoice({u"t", 0, 0, u"x"}), u"");
}

TEST(FilterEditAreaTest, TheEntryHoldsTheTextsTrimmedAndNoNumberYet)
{
    const FilterRule rule = editedRule({u"　title ", 4, 1, u" a b　"});
    EXPECT_EQ(rule.No, 0);
    EXPECT_EQ(rule.TermsCode, 4);
    EXPECT_EQ(rule.ActionCode, 1);
    EXPECT_EQ(rule.Header, u"title");
    EXPECT_EQ(rule.Data, u"a b");
}

}
}
