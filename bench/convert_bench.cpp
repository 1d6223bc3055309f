// Converts boxes with one kind of mail each, 5,000 mails of about 2 KB by default, and
// prints the processor time of each, the best of five. With the name of a kind it
// converts only that box, once (for a profiler).
//
//     tolvek_convert_bench [N [KIND]]
//
// It uses only convertMailBox and the sample's letters, so the same file can measure an
// older converter too.
#include "converter/conversion.h"
#include "demo/encode.h"
#include "demo/letters.h"
#include "demo/people.h"
#include "platform/system/files.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <ctime>
#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace {

using namespace tolvek;
using sample::Charset;

constexpr int kPeople = 320;
constexpr int kLettersInOne = 6; // makes about 2 KB

Text japaneseText(int number)
{
    Text text;
    for (int more = 0; more < kLettersInOne; ++more)
        for (const Text& line : sample::letter(number * 3 + more * 5,
                                               sample::passerBy(number % kPeople), sample::hana())
                                    .lines)
            text += line + u"\n";
    return text;
}

std::string englishText(int number)
{
    std::string text;
    for (int line = 0; line < 30; ++line)
        text += "Line " + std::to_string(number + line) +
                " of a letter about the weather, the garden and the cat next door.\n";
    return text;
}

std::string lines(const std::string& coded)
{
    std::string text;
    for (std::size_t at = 0; at < coded.size(); at += 76)
        text += coded.substr(at, 76) + "\n";
    return text;
}

std::string head(int number, Charset charset)
{
    const auto person = sample::passerBy(number * 7 % kPeople);
    return "From sender@example.jp Tue Feb 15 10:11:12 2000\n"
           "Received: from mail.example.jp (mail.example.jp [192.0.2.1]) by mx.example.jp;\n"
           " Tue, 15 Feb 2000 10:11:20 +0900\n"
           "Message-ID: <" +
           std::to_string(number) +
           "@example.jp>\n"
           "From: " +
           sample::headerText(person.name, charset) + " <" + toUtf8(person.address) +
           ">\nTo: hana@example.jp\nSubject: " +
           sample::headerText(u"お手紙 " + decimal(number), charset) +
           "\nDate: Tue, 15 Feb 2000 10:11:12 +0900\nMIME-Version: 1.0\n";
}

std::string plain(int number, Charset charset)
{
    return head(number, charset) + "Content-Type: text/plain; charset=" + sample::label(charset) +
           "\n\n" + sample::encoded(japaneseText(number), charset) + "\n";
}

std::string ascii(int number)
{
    return head(number, Charset::Iso2022Jp) + "Content-Type: text/plain; charset=us-ascii\n\n" +
           englishText(number) + "\n";
}

// A text part, the same text as HTML, and a picture.
std::string parts(int number)
{
    const std::string text = sample::encoded(japaneseText(number), Charset::Iso2022Jp);
    std::string html = text;
    for (std::size_t at = html.find('\n'); at != std::string::npos; at = html.find('\n', at + 5))
        html.replace(at, 1, "<br>\n");
    const std::string type = "; charset=iso-2022-jp\n\n";
    return head(number, Charset::Iso2022Jp) + "Content-Type: multipart/mixed; boundary=out\n\n" +
           "--out\nContent-Type: multipart/alternative; boundary=in\n\n--in\nContent-Type: "
           "text/plain" +
           type + text + "--in\nContent-Type: text/html" + type + "<html><body>" + html +
           "</body></html>\n--in--\n\n--out\nContent-Type: image/jpeg; name=a.jpg\n"
           "Content-Transfer-Encoding: base64\n\n" +
           lines(sample::base64(std::string(4000, 'x'))) + "--out--\n\n";
}

const std::map<std::string, std::function<std::string(int)>>& kinds()
{
    static const std::map<std::string, std::function<std::string(int)>> kKinds{
        {"iso-2022-jp", [](int n) { return plain(n, Charset::Iso2022Jp); }},
        {"ascii", ascii},
        {"utf-8", [](int n) { return plain(n, Charset::Utf8); }},
        {"shift_jis", [](int n) { return plain(n, Charset::ShiftJis); }},
        {"euc-jp", [](int n) { return plain(n, Charset::EucJp); }},
        {"mixed",
         [](int n) { return n % 5 == 4 ? ascii(n) : plain(n, static_cast<Charset>(n % 4)); }},
        {"parts", parts}};
    return kKinds;
}

double converted(const std::filesystem::path& box, const std::filesystem::path& temp)
{
    const std::clock_t start = std::clock();
    if (convertMailBox(box, temp).count == 0) std::exit(1);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void measure(const std::string& name, int mails, int times)
{
    const test::TempFolder folder;
    OpenFile box(folder / "box", OpenFile::Mode::Create);
    for (int number = 0; number < mails; ++number)
        box.write(kinds().at(name)(number));
    box.close();
    double best = converted(folder / "box", folder / "Tolvek.Tmp");
    for (int time = 1; time < times; ++time)
        best = std::min(best, converted(folder / "box", folder / "Tolvek.Tmp"));
    std::printf("%-12s %7.3f s %9.0f mails a second\n", name.c_str(), best, mails / best);
}

}

int main(int argc, char** argv)
{
    const int mails = argc > 1 ? std::atoi(argv[1]) : 5000;
    if (argc > 2) return measure(argv[2], mails, 1), 0;
    for (const auto& [name, make] : kinds())
        measure(name, mails, 5);
}
