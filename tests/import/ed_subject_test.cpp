#include "import/mail_fields.h"
#include "import_fixture.h"

namespace tolvek::test {
namespace {

class EdSubjectTest : public ImportTest {
protected:
    static Text subjectOf(const Text& line)
    {
        Text subject = u"old";
        edSubject(line, subject);
        return subject;
    }
};

TEST_F(EdSubjectTest, TakesWhatStandsBehindTheLabelAndOneSeparator)
{
    EXPECT_EQ(subjectOf(u"Subject:Hello"), u"Hello");
    EXPECT_EQ(subjectOf(u"Subject Hello World  "), u"Hello World");
    EXPECT_EQ(subjectOf(u"Subject:　こんにちは　"), u"こんにちは");
    EXPECT_EQ(subjectOf(u"SubjectXY"), u"Y");
}

TEST_F(EdSubjectTest, IsEmptyWithoutAValue)
{
    EXPECT_EQ(subjectOf(u"Subject"), u"");
    EXPECT_EQ(subjectOf(u"Subject:"), u"");
    EXPECT_EQ(subjectOf(u""), u"");
}

TEST_F(EdSubjectTest, KeepsAHundredCharactersAndDropsThoseBehind)
{
    const Text hundred(100, u'あ');
    EXPECT_EQ(subjectOf(u"Subject:" + hundred), hundred);
    EXPECT_EQ(subjectOf(u"Subject:" + hundred + u"い"), hundred);
    const Text letters = Text(99, u'a') + u"z";
    EXPECT_EQ(subjectOf(u"Subject:" + letters + u"!"), letters);
}

TEST_F(EdSubjectTest, CountsABlankInFrontAmongTheHundred)
{
    EXPECT_EQ(subjectOf(u"Subject: " + Text(100, u'a')), Text(99, u'a'));
}

TEST_F(EdSubjectTest, KeepsAShortSubjectWholeThoughTheCountIsInBytes)
{
    for (int size : {1, 41, 42, 43, 50, 51, 99})
        EXPECT_EQ(subjectOf(u"Subject:" + Text(static_cast<std::size_t>(size), u'あ')),
                  Text(static_cast<std::size_t>(size), u'あ'));
}

TEST_F(EdSubjectTest, DecodesTheLineWithItsLabel)
{
    EXPECT_EQ(subjectOf(u"Subject:It's"), u"It’s");
    EXPECT_EQ(decoded().back(), u"Subject:It's");
}

}
}
