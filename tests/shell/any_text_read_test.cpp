// Any Japanese text from a mail box through the converter library, the reader and the
// archive to the mail pane: unchanged but for the replacements that the way makes.
//
// TOLVEK_ROUNDS=1000 tries that many mails instead of the fixed 60.
#include "app/settings.h"
#include "app/state.h"
#include "app/test_hooks.h"
#include "browse/mail_view.h"
#include "browse/subject_list.h"
#include "import/mail_box_read.h"
#include "shell/events_window.h"
#include "store/subject_keys.h"
#include "support/any_text.h"

#include <cstdlib>
#include <filesystem>
#include <map>

namespace tolvek::test {
namespace {

class AnyTextReadTest : public EventsWindow {
protected:
    void SetUp() override
    {
        EventsWindow::SetUp();
        form.Load(); // it reads the settings
        hooks::setConverterLibrary({});
        const std::filesystem::path library = CONVERTER_LIBRARY;
        std::filesystem::copy_file(library, file(library.filename()));
        gPostPetDir = joinPath(appPath(), u"PostPet");
        std::filesystem::create_directories(nativePath(joinPath(gPostPetDir, kReceiveFolder)));
        fillMailBoxTable();
        fillMonthNames();
        gRecievMailReadOption = {};
        gSendMailReadOption = {};
        gRecievMailReadOption[0] = 1;
    }
    void read(const std::string& box)
    {
        writeBytes(
            nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail)), box);
        const DBEngine::Session session;
        MailBoxRead();
    }
    // Most mails fill one block of a row, some several.
    std::vector<AnyMail> mails()
    {
        TextMaker maker;
        const char* more = std::getenv("TOLVEK_ROUNDS");
        std::vector<AnyMail> all;
        for (int number = 0; number < (more != nullptr ? std::atoi(more) : 60); ++number) {
            const unsigned lines = number % 10 == 0 ? 300 : 1 + maker.below(12);
            all.push_back(anyMail(maker, lines, dateOf(number)));
        }
        return all;
    }
    static std::string dateOf(int number)
    {
        return "1 Jan " + std::to_string(1990 + number / 60) +
               " 1:" + std::to_string(10 + number % 50) + (number % 60 < 50 ? ":00" : ":30");
    }
};

// The archive has no bars, which ended a value on the classic platform.
Text stored(Text text)
{
    std::replace(text.begin(), text.end(), u'|', u'｜');
    return text;
}

Text shownText(const AnyMail& mail)
{
    Text text;
    for (const Text& line : mail.lines)
        text += stored(line) + Text(kCrLf);
    return text;
}

TEST_F(AnyTextReadTest, ComesFromTheBoxToTheMailPaneAsItIs)
{
    const std::vector<AnyMail> all = mails();
    std::string box;
    for (const AnyMail& mail : all)
        box += "From - Sat Jan  1 01:00:00 2000\n" + mail.bytes + "\n";
    read(box);
    ASSERT_EQ(rows(u"tblTolvek"), int(all.size()));
    dspSubject(form, u"a@example.com");
    ASSERT_EQ(gSubjectCount, int(all.size()));
    std::map<Text, Text> texts, shown; // by the first line of the header
    for (const AnyMail& mail : all)
        texts[u"件　名：" + stored(mail.subject)] = shownText(mail);
    for (Int16 row = 0; row < gSubjectCount; ++row) {
        dspMail(form, row);
        const Text header = form.lblHead->Caption();
        shown[header.substr(0, header.find(u'\r'))] = form.txtMail->Text();
    }
    EXPECT_EQ(shown, texts);
}

}
}
