#include "letters/subject_line.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(SubjectLineTest, AnswersHaveTheSubjectOfTheLetter)
{
    for (const TextView subject :
         {u"お花見", u"Re: お花見", u"RE：お花見", u"Re: Re: お花見", u"Re^2: お花見",
          u"Re[3]: お花見", u"Fwd: Re:お花見", u"返信：お花見", u"Re>お花見"})
        EXPECT_EQ(conversationSubject(subject), u"お花見");
}

TEST(SubjectLineTest, OtherWordsStay)
{
    EXPECT_EQ(conversationSubject(u"Report: a"), u"report: a");
    EXPECT_EQ(conversationSubject(u"返事"), u"返事");
    EXPECT_EQ(conversationSubject(u"Re:"), u"");
}

}
}
