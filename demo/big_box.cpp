#include "demo/big_box.h"

#include "platform/system/files.h"

namespace tolvek::sample {

namespace {

constexpr int kPeople = 320;
constexpr int kLettersInOne = 6; // makes about 2 KB

}

SampleMail bigMail(int number)
{
    using namespace std::chrono;
    const sys_seconds first = sys_days{March / 1 / 1998} + hours(7);
    SampleMail mail{passerBy(number * 7 % kPeople),
                    hana(),
                    {},
                    first + minutes(number * 73LL) + seconds(number % 60)};
    mail.letter = letter(number, mail.from, mail.to);
    mail.letter.subject += u" " + decimal(number);
    for (int more = 1; more < kLettersInOne; ++more) {
        const Letter next = letter(number * 3 + more * 5, mail.from, mail.to);
        // Without the greeting and the ending of the appended letters.
        mail.letter.lines.insert(mail.letter.lines.end(), next.lines.begin() + 2,
                                 next.lines.end() - 3);
    }
    mail.charset = number % 4 == 3 ? Charset::Utf8 : Charset::Iso2022Jp;
    mail.transfer = number % 8 == 3 ? Transfer::Base64 : Transfer::Plain;
    return mail;
}

void makeBigBox(const std::filesystem::path& file, int mails)
{
    constexpr std::size_t kBuffer = 1 << 18;
    OpenFile box(file, OpenFile::Mode::Create);
    std::string buffer;
    for (int number = 0; number < mails; ++number) {
        buffer += mboxText(bigMail(number));
        if (buffer.size() < kBuffer) continue;
        box.write(buffer);
        buffer.clear();
    }
    box.write(buffer);
    box.close();
}

}
