#include "import/read_account.h"

#include "app/database.h"
#include "app/file_names.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/paths.h"

#include <algorithm>
#include <exception>

namespace tolvek {

namespace {

using Why = ConverterNotes::Why;

constexpr std::size_t kMostNames = 1000;
constexpr int kMostCounted = 32767;
constexpr TextView kNotReached = u"前の箱のエラーで読み込みが終わったため、読んでいません";
// The mails of a moment share a commit, which may be what failed.
constexpr TextView kCutShort =
    u"途中のエラーで終わりました。その直前に「新しく保存」と数えたメールは、"
    u"次の読み込みで保存されることがあります";

bool isMissing(const ConverterNotes& notes)
{
    return std::ranges::any_of(notes.leftOut,
                               [](const auto& each) { return each.why == Why::NothingThere; });
}

// Only the own library's numbers have a known meaning.
Text statusText(Int16 status, const ConverterNotes& notes)
{
    const Text number = u"状態 " + decimal(status);
    if (!notes.given) return number;
    if (isMissing(notes)) return number + u"（" + Text(kNoSuchBox) + u"）";
    switch (static_cast<int>(status)) {
    case 1:
        return number + u"（メールの箱として読める形ではありません）";
    case 5:
        return number + u"（読んでいるあいだに書き換えられました）";
    default:
        return number + u"（読み取りに失敗しました）";
    }
}

}

ReadAccount::ReadAccount()
{
    const DateTime time = now();
    record_.time = formatDate(time) + u" " + formatTime(time);
}

void ReadAccount::expectBox(TextView folder, TextView mailFile)
{
    BoxRecord box;
    box.box = Text(folder) + u"/" + trim(mailFile);
    box.failure = kNotReached;
    record_.boxes.push_back(std::move(box));
}

void ReadAccount::beginNextBox()
{
    ++current_;
    box().failure.clear();
    notes_ = {};
}

void ReadAccount::converted(Int16 count, Int16 status, const ConverterNotes& notes)
{
    notes_ = notes;
    if (status != 0)
        box().failure = statusText(status, notes);
    else
        box().held = notes.given ? notes.mails : static_cast<int>(count);
    takeNotes();
}

void ReadAccount::takeNotes()
{
    for (const ConverterNotes::LeftOut& left : notes_.leftOut) {
        if (left.why == Why::StillGrowing) add(box().growing, left.what);
        if (left.why == Why::UnreadableFile) add(box().files, left.what);
    }
}

void ReadAccount::conversionFailed(const RuntimeError& error)
{
    box().failure = u"エラー " + decimal(error.number()) + u"（" + error.description() + u"）";
}

void ReadAccount::add(LeftThings& things, const Text& name)
{
    ++things.count;
    if (names_ >= kMostNames) return;
    ++names_;
    things.names.push_back(name);
}

void ReadAccount::keepOut(const Text& rule)
{
    auto& rules = box().keptOut;
    auto place = std::ranges::find(rules, rule, &KeptOut::rule);
    if (place == rules.end()) place = rules.insert(place, {rule, 0});
    ++place->mails;
}

void ReadAccount::mail(MailFate fate, const Text& detail)
{
    switch (fate) {
    case MailFate::Stored:
        ++box().stored;
        break;
    case MailFate::Known:
        ++box().known;
        break;
    case MailFate::KeptOut:
        keepOut(detail);
        break;
    case MailFate::NoDate:
        add(box().noDate, detail);
        break;
    case MailFate::NoText:
        add(box().noText, detail);
        break;
    case MailFate::Failed:
        add(box().failed, detail);
        break;
    }
}

// The library's notes of mails without a date come in the order of the mails, and show
// more of each than the temp file does.
void ReadAccount::endBox(bool hadFailure)
{
    auto name = box().noDate.names.begin();
    for (const ConverterNotes::LeftOut& left : notes_.leftOut)
        if (left.why == Why::NoDate && name != box().noDate.names.end()) *name++ = left.what;
    const int accounted = box().accounted();
    // A count of 16 bits stays at its largest value.
    if (!notes_.given && box().held == kMostCounted) box().held = std::max(kMostCounted, accounted);
    if (!hadFailure || box().held <= accounted) return;
    box().unread = box().held - accounted;
    box().failure = kCutShort;
}

void writeReadAccount(const ReadAccount& account)
{
    if (account.record().boxes.empty()) return;
    try {
        const Path database = existingPath(gDbPath);
        appendToReadLog(database.parent_path() / nativePath(kReadLogName), account.record());
    } catch (const std::exception&) {
        // See the header: no box, and no other message changes.
    }
}

}
