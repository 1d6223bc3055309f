#include "app/converter_library.h"
#include "app/test_hooks.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/process.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

class ConverterLibraryTest : public ::testing::Test {
protected:
    void SetUp() override { setAppPath(pathText(folder.path())); }
    void TearDown() override { hooks::setConverterLibrary({}); }

    void givenTheLibrary()
    {
        std::filesystem::copy_file(ECHO_LIBRARY, folder / SharedLibrary::fileName("Tolvek"));
    }
    int numberOf(const std::function<void()>& call)
    {
        try {
            call();
        } catch (const RuntimeError& error) {
            description = error.description();
            return error.number();
        }
        return 0;
    }

    TempFolder folder;
    Int16 count = 0;
    Int16 status = 0;
    Text output;
    Text description;
};

TEST_F(ConverterLibraryTest, AMissingLibraryIsError53WithItsNameAtEachCall)
{
    for (int n = 0; n < 2; ++n)
        EXPECT_EQ(numberOf([&] { converterLibrary().Mail_StrChange(u"a", output, count); }), 53);
    EXPECT_NE(description.find(u"Tolvek"), Text::npos);
}

TEST_F(ConverterLibraryTest, ALibraryPutInPlaceLaterIsFound)
{
    EXPECT_EQ(numberOf([&] { converterLibrary().Mail_StrChange(u"a", output, count); }), 53);
    givenTheLibrary();
    EXPECT_EQ(numberOf([&] { converterLibrary().Mail_StrChange(u"a", output, count); }), 0);
}

TEST_F(ConverterLibraryTest, TheTextComesBackWithItsLength)
{
    givenTheLibrary();
    converterLibrary().Mail_StrChange(u"abc", output, count);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(left(output, count), u"abc");
}

TEST_F(ConverterLibraryTest, AsManyCharactersComeBackAsTheLengthSaysWhateverTheirWidth)
{
    givenTheLibrary();
    converterLibrary().Mail_StrChange(u"あいう", output, count);
    EXPECT_GE(output.size(), 3U);
    EXPECT_EQ(left(output, 3), u"あいう");
}

TEST_F(ConverterLibraryTest, ALongTextIsCutAtAWholeCharacter)
{
    givenTheLibrary();
    const Text longText = u"a" + Text(3000, u'あ'); // the record ends inside a character
    converterLibrary().Mail_StrChange(longText, output, count);
    EXPECT_EQ(count, kTextRecordSize - 1);
    EXPECT_EQ(output.substr(0, 2), u"aあ");
    EXPECT_EQ(output.find(u'・'), Text::npos);
}

TEST_F(ConverterLibraryTest, PathsAreFilledWithBlanksBehindTheirNul)
{
    givenTheLibrary();
    converterLibrary().Tolvek_Edit(u"/some/list.ppl", u"/some/mail.ppm", u"/some/Tolvek.Tmp", count,
                                   status);
    EXPECT_EQ(count, 14);
    EXPECT_EQ(status, 0);
}

TEST_F(ConverterLibraryTest, ALibraryWithoutNotesIsCalledAsBefore)
{
    givenTheLibrary();
    ConverterNotes notes;
    converterLibrary().Tolvek_EditNoted(u"/some/list.ppl", u"/some/mail.ppm", u"/some/Tolvek.Tmp",
                                        count, status, notes);
    EXPECT_EQ(count, 14);
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(notes.given);
}

TEST_F(ConverterLibraryTest, APathTooLongForItsRecordIsRefusedAndNeverCut)
{
    givenTheLibrary();
    const Text fits = u"/" + Text(254, u'a');
    const Text tooLong = u"/" + Text(255, u'a');
    EXPECT_EQ(numberOf([&] { converterLibrary().Tolvek_Edit(fits, fits, fits, count, status); }),
              0);
    EXPECT_EQ(count, 255);
    EXPECT_EQ(numberOf([&] { converterLibrary().Tolvek_Edit(fits, tooLong, fits, count, status); }),
              75);
}

TEST_F(ConverterLibraryTest, APathThatTheRecordsCantHoldIsToldBeforehand)
{
    givenTheLibrary();
    converterLibrary().requirePath(u"/" + Text(254, u'a'));
    EXPECT_EQ(numberOf([&] { converterLibrary().requirePath(u"/" + Text(255, u'a')); }), 75);
    EXPECT_EQ(numberOf([&] { converterLibrary().requirePath(u"/" + Text(85, u'箱')); }), 75);
}

TEST_F(ConverterLibraryTest, TheFriendFolderEndsAtItsNul)
{
    givenTheLibrary();
    const Text asHandedOn = u"/some/folder" + Text(1, u'\0') + blanks(100);
    converterLibrary().TolvekFriend_Edit(asHandedOn, u"/some/Friend.Tmp", count, status);
    EXPECT_EQ(count, 12);
    EXPECT_EQ(status, 16);
}

}
}
