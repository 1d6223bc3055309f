#include "letters/search.h"

#include "letters_fixture.h"

namespace tolvek::test {
namespace {

class SearchTest : public LettersFixture {
protected:
    void SetUp() override
    {
        LettersFixture::SetUp();
        addFriend(u"hanako@example.jp", u"はなちゃん", u"モモ");
        store(with(u"旅行の話", u"京都へ行きました。\r\n", u"20010401"));
        store(with(u"お花見", u"桜がきれいでした。ガッコウ\r\n", u"20020402"));
        Mail sent = mail(u"taro@example.jp", u"jiro@example.jp", u"宣伝", u"20020503");
        sent.SndRcvFlag = true;
        sent.SndName = u"太郎";
        sent.RcvName = u"次郎";
        sent.Mail1 = u"旅\r\n行の宣伝です。山﨑";
        store(sent);
        all_ = library();
    }
    void TearDown() override
    {
        all_.reset();
        LettersFixture::TearDown();
    }
    Lines found(TextView typed, bool exact = false) const
    {
        Lines subjects;
        for (const LetterId id : matching(*all_, parseQuery(typed, exact)))
            subjects.push_back(toUtf8(all_->letter(id).subject));
        return subjects;
    }

    std::shared_ptr<const Library> all_;
};

const Lines kAll{"宣伝", "お花見", "旅行の話"};

TEST_F(SearchTest, AWordOfAnyLengthIsFoundInSubjectNamesAddressesAndText)
{
    EXPECT_EQ(found(u"桜"), Lines{"お花見"});
    EXPECT_EQ(found(u"旅行"), (Lines{"宣伝", "旅行の話"})) << "also across a line end";
    EXPECT_EQ(found(u"jiro@"), Lines{"宣伝"});
    EXPECT_EQ(found(u"花子"), (Lines{"お花見", "旅行の話"}));
    EXPECT_EQ(found(u"ほにゃらら"), Lines{});
    EXPECT_EQ(found(u""), kAll);
}

TEST_F(SearchTest, FormsDoNotMatterUnlessTheQueryIsExact)
{
    EXPECT_EQ(found(u"がっこう"), Lines{"お花見"});
    EXPECT_EQ(found(u"山崎"), Lines{"宣伝"});
    EXPECT_EQ(found(u"HANAKO"), (Lines{"お花見", "旅行の話"}));
    EXPECT_EQ(found(u"がっこう", true), Lines{});
    EXPECT_EQ(found(u"ガッコウ", true), Lines{"お花見"});
}

TEST_F(SearchTest, AllWordsMustOccurAndExcludedOnesMustNot)
{
    EXPECT_EQ(found(u"旅行 京都"), Lines{"旅行の話"});
    EXPECT_EQ(found(u"旅行 -京都"), Lines{"宣伝"});
    EXPECT_EQ(found(u"-旅行"), Lines{"お花見"});
}

TEST_F(SearchTest, NoWordIsFoundAcrossTwoFields)
{
    EXPECT_EQ(found(u"話花子"), Lines{});
}

TEST_F(SearchTest, SenderAndReceiverAreAskedSeparately)
{
    EXPECT_EQ(found(u"from:taro"), Lines{"宣伝"});
    EXPECT_EQ(found(u"to:taro"), (Lines{"お花見", "旅行の話"}));
    EXPECT_EQ(found(u"宛先:次郎"), Lines{"宣伝"});
    EXPECT_EQ(found(u"差出人:次郎"), Lines{});
    EXPECT_EQ(found(u"-from:hanako"), Lines{"宣伝"});
    EXPECT_EQ(found(u"from:hanako", true), (Lines{"お花見", "旅行の話"}));
}

TEST_F(SearchTest, TheFriendBooksNameIsFoundWhereTheLetterHasAnother)
{
    EXPECT_EQ(found(u"はなちゃん"), (Lines{"お花見", "旅行の話"}));
    EXPECT_EQ(found(u"from:ハナチャン"), (Lines{"お花見", "旅行の話"}));
    EXPECT_EQ(found(u"to:はなちゃん"), Lines{});
    EXPECT_EQ(found(u"-はなちゃん"), Lines{"宣伝"});
}

TEST_F(SearchTest, YearsNarrow)
{
    EXPECT_EQ(found(u"year:2002"), (Lines{"宣伝", "お花見"}));
    EXPECT_EQ(found(u"year:2002/5"), Lines{"宣伝"});
    EXPECT_EQ(found(u"旅行 -year:2002"), Lines{"旅行の話"});
    EXPECT_EQ(found(u"year:2001 year:2002/4"), (Lines{"お花見", "旅行の話"}));
}

TEST_F(SearchTest, AmongFormerResultsOnlyTheseAreSearched)
{
    EXPECT_EQ(matching(*all_, parseQuery(u"旅行"), std::vector<LetterId>{1, 2}),
              std::vector<LetterId>{2});
}

TEST_F(SearchTest, ALongerQueryIsNarrower)
{
    const auto narrower = [](TextView next, TextView before) {
        return isNarrower(parseQuery(next), parseQuery(before));
    };
    EXPECT_TRUE(narrower(u"旅行", u"旅"));
    EXPECT_TRUE(narrower(u"旅 行", u"旅"));
    EXPECT_TRUE(narrower(u"旅", u""));
    EXPECT_TRUE(narrower(u"from:旅", u"旅"));
    EXPECT_TRUE(narrower(u"旅 -行", u"旅"));
    EXPECT_FALSE(narrower(u"旅", u"旅行"));
    EXPECT_FALSE(narrower(u"旅", u"from:旅"));
    EXPECT_FALSE(narrower(u"-旅行", u"-旅")) << "excludes less";
    EXPECT_FALSE(narrower(u"旅 year:2001", u"旅"));
}

TEST_F(SearchTest, ACancelledSearchEnds)
{
    EXPECT_LE(matching(*all_, parseQuery(u""), [] { return true; }).size(), 3u);
}

TEST_F(SearchTest, CountsLeaveOutTheNarrowingThatTheyAreThereFor)
{
    const auto matches = matching(*all_, parseQuery(u""));
    Narrowing narrowing;
    narrowing.months = Months{200200, 200299};
    narrowing.person = all_->personOf(1);
    const Results results = narrowed(*all_, matches, narrowing);
    EXPECT_EQ(results.letters, std::vector<LetterId>{1});
    EXPECT_EQ(results.matches, 3u);
    ASSERT_EQ(results.months.size(), 2u) << "of this person, in all months";
    EXPECT_EQ(results.months[0].month, 200104);
    EXPECT_EQ(results.months[0].received, 1u);
    EXPECT_EQ(results.people.size(), 2u) << "of 2002, all people";
}

TEST_F(SearchTest, ConversationAndDirectionNarrowEverything)
{
    const auto matches = matching(*all_, parseQuery(u""));
    Narrowing narrowing;
    narrowing.sent = true;
    EXPECT_EQ(narrowed(*all_, matches, narrowing).letters, std::vector<LetterId>{0});
    narrowing = {};
    narrowing.conversation = all_->conversationOf(2);
    const Results results = narrowed(*all_, matches, narrowing);
    EXPECT_EQ(results.letters, std::vector<LetterId>{2});
    EXPECT_EQ(results.people.size(), 1u);
}

}
}
