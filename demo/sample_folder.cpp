#include "demo/sample_folder.h"

#include "demo/friend_book.h"
#include "demo/sample_mail.h"
#include "demo/travel_diary.h"
#include "platform/system/files.h"

#include <algorithm>

namespace tolvek::sample {

namespace {

using std::chrono::sys_seconds;

constexpr int kReceived = 130; // different received mails; numbers from 0
constexpr int kSent = 62;
constexpr int kDiary = 57; // the number of the long received mail
constexpr int kToMyself[] = {20, 44};

// About three weeks and some odd minutes from one mail to the next.
sys_seconds timeOf(int number, std::chrono::seconds after)
{
    using namespace std::chrono;
    const sys_seconds first = sys_days{January / 6 / 1998} + hours(8) + after;
    return first + days(number * 19 + number % 7) + minutes(number * 47 % 780) +
           seconds(number * 13 % 60);
}

// Every style occurs, ordinary ones more often.
void dress(SampleMail& mail, int number)
{
    static constexpr Charset kCharsets[] = {
        Charset::Iso2022Jp, Charset::Iso2022Jp, Charset::ShiftJis, Charset::Iso2022Jp,
        Charset::Utf8,      Charset::EucJp,     Charset::Iso2022Jp};
    mail.charset = kCharsets[number % 7];
    if (mail.charset == Charset::Utf8)
        mail.transfer = number % 2 == 0 ? Transfer::Base64 : Transfer::QuotedPrintable;
    if (number % 11 < 8)
        mail.dateStyle = DateStyle::Internet;
    else
        mail.dateStyle = static_cast<DateStyle>(number % 8 + 1);
    if (number % 9 == 4) mail.nameStyle = NameStyle::Comment;
    const bool guessable = mail.transfer == Transfer::Plain;
    mail.mimeHeaders = !(guessable && number % 6 == 5);
    if (mail.charset == Charset::Iso2022Jp && number % 10 == 3)
        mail.nameStyle = NameStyle::RawAngle;
}

const Person& friendOf(int number)
{
    // The first ten write more often than the others.
    const auto count = static_cast<int>(friends().size());
    const int index = number % 3 == 0 ? number / 3 % 10 : number * 2 / 3 % count;
    return friends()[static_cast<std::size_t>(index)];
}

SampleMail received(int number)
{
    SampleMail mail{friendOf(number), hana(), {}, timeOf(number, std::chrono::hours(1))};
    mail.letter = letter(number, mail.from, mail.to);
    dress(mail, number);
    if (number != kDiary) return mail;
    mail.from = friends().front();
    mail.letter = travelDiary();
    mail.dateStyle = DateStyle::Internet;
    return mail;
}

SampleMail sent(int number)
{
    const bool mine =
        std::find(std::begin(kToMyself), std::end(kToMyself), number) != std::end(kToMyself);
    SampleMail mail{hana(),
                    mine ? hana() : friendOf(number * 2 + 1),
                    {},
                    timeOf(number * 2, std::chrono::hours(5))};
    mail.letter = letter(number * 7 + 5, mail.from, mail.to);
    if (mine)
        mail.letter = {
            u"自分へのメモ",
            {u"牛乳、切手、モモのおやつ。", u"水曜日は早く帰ること。", u"日記の続きを書く。"}};
    dress(mail, number + 2);
    return mail;
}

template <class Make> std::string boxOf(int first, int last, Make make)
{
    std::string box;
    for (int number = first; number < last; ++number)
        box += mboxText(make(number));
    return box;
}

// A mail to oneself is delivered too, so it is in boxes of both sides.
std::string ownCopies()
{
    std::string copies;
    for (const int number : kToMyself)
        copies += mboxText(sent(number));
    return copies;
}

// The drawers hold mails of their own and copies of mails from the main box, as when a
// user has filed a copy.
std::string contents(std::size_t box)
{
    switch (box) {
    case 0:
        return boxOf(0, 85, received) + ownCopies();
    case 1:
        return boxOf(85, 115, received) + boxOf(30, 38, received);
    case 2:
        return boxOf(115, kReceived, received) + boxOf(60, 62, received);
    case 3:
        return boxOf(0, 47, sent);
    default:
        return boxOf(47, kSent, sent) + boxOf(10, 13, sent);
    }
}

std::filesystem::path native(TextView text)
{
    return std::filesystem::path(std::u16string(text));
}

}

const std::vector<SampleBox>& sampleBoxes()
{
    static const std::vector<SampleBox> boxes{
        {u"受信フォルダ", u"受信リスト.ppl", u"受信メール.ppm", 87},
        {u"受信フォルダ", u"ピンクの引出しリスト.ppl", u"ピンクの引出し.ppm", 38},
        {u"受信フォルダ", u"黄色の引出しリスト.ppl", u"黄色の引出し.ppm", 17},
        {u"送信フォルダ", u"送信リスト.ppl", u"送信メール.ppm", 47},
        {u"送信フォルダ", u"ピンクの引出しリスト.ppl", u"ピンクの引出し.ppm", 18},
    };
    return boxes;
}

void makeSampleFolder(const std::filesystem::path& folder)
{
    for (std::size_t index = 0; index < sampleBoxes().size(); ++index) {
        const SampleBox& box = sampleBoxes()[index];
        const auto side = folder / native(box.folder);
        std::filesystem::create_directories(side);
        replaceContents(side / native(box.listFile), {});
        replaceContents(side / native(box.mailFile), contents(index));
    }
    makeFriendBook(folder / native(u"おともだち帳"));
}

}
