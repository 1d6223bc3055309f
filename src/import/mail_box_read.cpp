#include "import/mail_box_read.h"

#include "app/converter_library.h"
#include "app/file_names.h"
#include "app/guard.h"
#include "app/reports.h"
#include "app/settings.h"
#include "app/state.h"
#include "import/tmp_read.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"

namespace tolvek {

const MailBoxFiles kReceiveMainBox{u"受信リスト.ppl", u"受信メール.ppm"};
const MailBoxFiles kSendMainBox{u"送信リスト.ppl", u"送信メール.ppm"};

CheckedArray<MailBoxFiles, 16> gMailBoxTable;

namespace {

constexpr int kLastOption = 15;

struct BoxSide {
    TextView folder;
    const MailBoxFiles& mainBox;
    const CheckedArray<Int16, 17>& options;
    Int16 flag;

    // Element 0 is the main box, elements 1 to 15 are the drawers.
    bool isChosen(int element) const { return options[element] == 1; }
    const MailBoxFiles& files(int element) const
    {
        return element == 0 ? mainBox : gMailBoxTable[element - 1];
    }
    // A settings file edited by hand may choose a row without files. The path then ends
    // in the folder's separator, and the converter refuses it.
    Text path(TextView file) const
    {
        return joinPath(joinPath(trim(gPostPetDir), folder), trim(file));
    }
};

Text tempPath()
{
    return joinPath(appPath(), kMailTempName);
}

// Checked before the walk, since drawers have longer names than main boxes: too deep a
// folder would fail halfway.
void requirePaths(const BoxSide& side)
{
    const auto& required = converterLibrary().requirePath;
    if (!required) return;
    for (int element = 0; element <= kLastOption; ++element) {
        if (!side.isChosen(element)) continue;
        const MailBoxFiles& files = side.files(element);
        for (const Text& path : {side.path(files.list), side.path(files.mail), tempPath()})
            required(path);
    }
}

void announce(const BoxSide& side, ReadAccount& account)
{
    for (int element = 0; element <= kLastOption; ++element)
        if (side.isChosen(element)) account.expectBox(side.folder, side.files(element).mail);
}

class BoxWalk {
public:
    explicit BoxWalk(ReadAccount& account) : account_(account) {}

    void readSide(const BoxSide& side)
    {
        readBox(side, 0);
        for (int element = 1; element <= kLastOption; ++element) {
            readBox(side, element);
            DoEvents();
        }
    }

private:
    void readBox(const BoxSide& side, int element)
    {
        if (!side.isChosen(element) || reports_.lasting()) return;
        const MailBoxFiles& files = side.files(element);
        gStatusLines[4] = Text(side.folder) + u"   " + trim(files.mail);
        account_.beginNextBox();
        const ReportWatch boxReports;
        const Int16 count = converted(side, files);
        if (status_ == 0 && count != 0) tmpRead(side.flag, side.flag, count, account_);
        account_.endBox(boxReports.any());
    }

    // The box's temp file; its count of mails.
    Int16 converted(const BoxSide& side, const MailBoxFiles& files)
    {
        Int16 count = 0;
        ConverterNotes notes;
        try {
            convert(side.path(files.list), side.path(files.mail), count, notes);
        } catch (const std::exception& failure) {
            account_.conversionFailed(asRuntimeError(failure));
            throw;
        }
        account_.converted(count, status_, notes);
        return count;
    }

    void convert(const Text& list, const Text& mail, Int16& count, ConverterNotes& notes)
    {
        const ConverterLibrary& library = converterLibrary();
        if (library.Tolvek_EditNoted)
            library.Tolvek_EditNoted(list, mail, tempPath(), count, status_, notes);
        else
            library.Tolvek_Edit(list, mail, tempPath(), count, status_);
    }

    ReadAccount& account_;
    const ReportWatch reports_;
    // Kept: not reset before each call. A converter that writes no status leaves the
    // previous box's, so one box that can't be read stops those after it.
    Int16 status_ = 0;
};

}

void fillMailBoxTable()
{
    static constexpr TextView drawers[] = {
        u"ピンクの引出し", u"黄色の引出し", u"紫の引出し",   u"緑色の引出し", u"黒の引出し",
        u"水色の引出し",   u"赤の引出し",   u"茶色の引出し", u"橙色の引出し",
    };
    gMailBoxTable = {};
    int row = 0;
    for (TextView drawer : drawers) {
        const Text name(drawer);
        gMailBoxTable[row++] = {name + u"リスト.ppl", name + u".ppm"};
    }
}

void MailBoxRead(ReadAccount& account)
{
    const BoxSide receive{.folder = kReceiveFolder,
                          .mainBox = kReceiveMainBox,
                          .options = gRecievMailReadOption,
                          .flag = 0};
    const BoxSide send{
        .folder = kSendFolder, .mainBox = kSendMainBox, .options = gSendMailReadOption, .flag = -1};
    announce(receive, account);
    announce(send, account);
    requirePaths(receive);
    requirePaths(send);
    BoxWalk walk(account);
    walk.readSide(receive);
    walk.readSide(send);
}

void MailBoxRead()
{
    ReadAccount unread;
    MailBoxRead(unread);
}

}
