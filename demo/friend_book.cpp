#include "demo/friend_book.h"

#include "demo/encode.h"
#include "demo/people.h"
#include "platform/system/files.h"

#include <array>

namespace tolvek::sample {

namespace {

// One friend for each kind of pet.
struct Owner {
    std::size_t person; // among friends()
    int kindCode;
    int mails;
};
constexpr std::array<Owner, kFriendsWithPets> kOwners{
    {{0, 9, 12}, {1, 2, 9}, {3, 4, 7}, {5, 7, 6}, {6, 8, 5}, {8, 6, 4}, {10, 1, 3}, {14, 3, 2}}};

std::string inQuotes(TextView text)
{
    return '"' + encoded(text, Charset::ShiftJis) + '"';
}

std::string petsText()
{
    std::string text = encoded(u"種類,ペット,名前,アドレス,通数\r\n", Charset::ShiftJis);
    for (const Owner& owner : kOwners) {
        const Person& person = friends()[owner.person];
        text += std::to_string(owner.kindCode) + ',' + inQuotes(person.pet) + ',' +
                inQuotes(person.name) + ',' + toUtf8(person.address) + ',' +
                std::to_string(owner.mails) + "\r\n";
    }
    return text;
}

std::string card(const std::string& version, const std::string& lines)
{
    return "BEGIN:VCARD\r\nVERSION:" + version + "\r\n" + lines + "END:VCARD\r\n";
}

// Each version states charset, encoding and preferred address in its own way.
std::string cardsText()
{
    const auto name = [](std::size_t person, Charset charset) {
        return encoded(friends()[person].name, charset);
    };
    const auto address = [](std::size_t person) { return toUtf8(friends()[person].address); };
    return card("2.1", "FN;CHARSET=Shift_JIS:" + name(21, Charset::ShiftJis) +
                           "\r\nEMAIL;INTERNET:" + address(21) + "\r\n") +
           card("2.1", "FN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:" +
                           quotedPrintable(name(28, Charset::Utf8)) +
                           "\r\nEMAIL;INTERNET:" + address(28) + "\r\n") +
           card("3.0", "FN:" + name(20, Charset::Utf8) +
                           "\r\nEMAIL;TYPE=home:naomi-home@example.org\r\n"
                           "EMAIL;TYPE=work,pref:" +
                           address(20) + "\r\nNOTE:Two addresses\\, one preferred.\r\n") +
           card("4.0",
                "FN:" + name(27, Charset::Utf8) + "\r\nEMAIL;PREF=1:" + address(27) + "\r\n");
}

}

void makeFriendBook(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    replaceContents(folder / u"ペット.csv", petsText());
    replaceContents(folder / u"カード.vcf", cardsText());
}

}
