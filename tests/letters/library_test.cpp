#include "letters_fixture.h"

namespace tolvek::test {
namespace {

class LibraryTest : public LettersFixture {
protected:
    static Lines peopleOf(const Library& library)
    {
        Lines lines;
        for (const Person& person : library.people()) {
            std::string line = toUtf8(person.name) + (person.isFriend ? "*" : "");
            for (const Text& address : person.addresses)
                line += " " + toUtf8(address);
            line += " " + std::to_string(person.received) + "+" + std::to_string(person.sent);
            lines.push_back(line);
        }
        return lines;
    }
    static Mail from(TextView address, TextView name, TextView date = u"20000215")
    {
        Mail made = mail(address, u"taro@example.jp", u"件名", date);
        made.SndName = name;
        return made;
    }
    static Mail to(TextView address, TextView name, TextView date = u"20000215")
    {
        Mail made = mail(u"taro@example.jp", address, u"返事", date);
        made.RcvName = name;
        made.SndRcvFlag = true;
        return made;
    }
};

TEST_F(LibraryTest, TheNewestLetterComesFirst)
{
    store(with(u"old", u"", u"19991231"));
    store(with(u"new", u"", u"20010101"));
    store(with(u"middle", u"", u"20000101"));
    EXPECT_EQ(subjectsOf(*library()), (Lines{"new", "middle", "old"}));
}

TEST_F(LibraryTest, OfOneSecondTheOneThatWasStoredLastComesFirst)
{
    Mail twin = with(u"first", u"");
    store(twin);
    twin.SubKey = 1;
    twin.Subject = u"second";
    store(twin);
    EXPECT_EQ(subjectsOf(*library()), (Lines{"second", "first"}));
}

TEST_F(LibraryTest, ALetterOfSeveralFilesIsThereOnceAndNamesThem)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    store(with(u"both", u"text"));
    store(with(u"both", u"text"), backup);
    store(with(u"backup only", u"", u"19990101"), backup);
    const auto all = libraryOf({live(), folder / "Tolvek_20010101.Mdb"});
    EXPECT_EQ(subjectsOf(*all), (Lines{"both", "backup only"}));
    EXPECT_EQ(all->filesOf(0), (std::vector<int>{0, 1}));
    EXPECT_EQ(all->filesOf(1), std::vector<int>{1});
}

// A backup empties the archive, so sub keys begin anew there.
TEST_F(LibraryTest, AnotherSubKeyDoesNotMakeAnotherLetter)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    Mail again = with(u"same", u"text");
    store(again);
    again.SubKey = 1;
    store(again, backup);
    EXPECT_EQ(subjectsOf(*libraryOf({live(), folder / "Tolvek_20010101.Mdb"})), Lines{"same"});
}

TEST_F(LibraryTest, OneKeyWithAnotherSubjectIsAnotherLetter)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    store(with(u"one", u"text"));
    store(with(u"other", u"text"), backup);
    EXPECT_EQ(libraryOf({live(), folder / "Tolvek_20010101.Mdb"})->size(), 2u);
}

TEST_F(LibraryTest, TwoRowsOfOneFileAreAlwaysTwoLetters)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    Mail twin = with(u"twin", u"text");
    for (const Text& file : {gDbPath, backup}) {
        twin.SubKey = 0;
        store(twin, file);
        twin.SubKey = 1;
        store(twin, file);
    }
    const auto all = libraryOf({live(), folder / "Tolvek_20010101.Mdb"});
    EXPECT_EQ(all->size(), 2u);
    EXPECT_EQ(all->filesOf(1), (std::vector<int>{0, 1}));
}

TEST_F(LibraryTest, ATextThatLostSomethingGivesWayToAWholeOne)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    store(with(u"a", Text(u"ha\0\0", 4)));
    store(with(u"a", u"half"), backup);
    const auto all = libraryOf({live(), folder / "Tolvek_20010101.Mdb"});
    ASSERT_EQ(all->size(), 1u);
    EXPECT_EQ(all->letter(0).text, u"half");
}

TEST_F(LibraryTest, AnIdentityFindsTheLetterInAnotherLibrary)
{
    store(with(u"a", u""));
    const std::uint64_t identity = library()->letter(0).identity;
    store(with(u"newer", u"", u"20020101"));
    const auto all = library();
    ASSERT_TRUE(all->find(identity));
    EXPECT_EQ(all->letter(*all->find(identity)).subject, u"a");
    EXPECT_FALSE(all->find(identity + 1));
}

TEST_F(LibraryTest, PeopleHaveTheNameUsedLastAndTheirCounts)
{
    store(from(u"hana@x.jp", u"はなちゃん", u"20010101"));
    store(from(u"HANA@x.jp", u"花子", u"20000101"));
    store(to(u"hana@x.jp", u"設定無し", u"20020101"));
    EXPECT_EQ(peopleOf(*library()), Lines{"はなちゃん hana@x.jp 2+1"});
}

TEST_F(LibraryTest, TheFriendBookMakesSeveralAddressesOnePerson)
{
    addFriend(u"hana@x.jp", u"花子", u"モモ");
    addFriend(u"hana@work.jp", u"花子", u"モモ");
    store(from(u"hana@x.jp", u"h", u"20010101"));
    store(from(u"hana@work.jp", u"h", u"20000101"));
    store(from(u"jiro@x.jp", u"花子", u"19990101"));
    EXPECT_EQ(peopleOf(*library()),
              (Lines{"花子* hana@x.jp hana@work.jp 2+0", "花子 jiro@x.jp 1+0"}));
}

TEST_F(LibraryTest, TheFriendBookOfTheFirstFileCounts)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    addFriend(u"hana@x.jp", u"新", u"モモ");
    Statement old{
        u"INSERT INTO tblFriend (tblFriend_PetKind, tblFriend_Pet, tblFriend_Name, "
        u"tblFriend_Address, tblFriend_RecvMailCnt ) VALUES( '', '', '旧', 'hana@x.jp', 0 )"};
    execute(old, backup);
    store(from(u"hana@x.jp", u"h"), backup);
    EXPECT_EQ(peopleOf(*libraryOf({live(), folder / "Tolvek_20010101.Mdb"})),
              Lines{"新* hana@x.jp 1+0"});
}

TEST_F(LibraryTest, WithoutANameAPersonHasTheAddressAndWithoutAnAddressTheName)
{
    store(from(u"nanashi@x.jp", u"設定無し"));
    store(from(u"設定無し", u"どこか", u"19990101"));
    EXPECT_EQ(peopleOf(*library()), (Lines{"nanashi@x.jp nanashi@x.jp 1+0", "どこか 1+0"}));
}

TEST_F(LibraryTest, ALetterAndItsAnswersAreOneConversation)
{
    Mail first = from(u"hana@x.jp", u"h", u"20000101");
    first.Subject = u"お花見";
    store(first);
    Mail answer = to(u"hana@x.jp", u"h", u"20000102");
    answer.Subject = u"Re: お花見";
    store(answer);
    Mail others = from(u"jiro@x.jp", u"j", u"20000103");
    others.Subject = u"お花見";
    store(others);
    const auto all = library();
    EXPECT_EQ(all->conversationOf(1), all->conversationOf(2));
    EXPECT_NE(all->conversationOf(0), all->conversationOf(1));
}

TEST_F(LibraryTest, OddDatesAreBorne)
{
    store(with(u"no month", u"", u"20010015"));
    store(with(u"a short year", u"", u"2050106"));
    store(with(u"none", u"", u"x"));
    const auto all = library();
    ASSERT_EQ(all->size(), 3u);
    EXPECT_EQ(all->letter(0).year(), 2001);
    EXPECT_EQ(all->letter(0).month(), 0);
    EXPECT_EQ(all->monthOf(0), 200100);
    EXPECT_EQ(all->letter(1).year(), 205);
    EXPECT_EQ(all->letter(2).year(), 0);
    EXPECT_EQ(all->monthOf(2), 0);
}

TEST_F(LibraryTest, AnEmptyOneIsEmpty)
{
    const Library none;
    EXPECT_EQ(none.size(), 0u);
    EXPECT_FALSE(none.find(1));
    EXPECT_EQ(library()->size(), 0u);
}

}
}
