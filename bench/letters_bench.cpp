// Reads archives of generated letters (about 2 KB each in a mail box) as TolvekLetters
// does, and searches them for words of one, two and four characters. Prints seconds,
// letters, the number that a plain search through the texts finds, and memory.
//
//     tolvek_letters_bench FOLDER [LETTERS [FILES [--cache]]]
//
// Makes the archives in FOLDER, in as many files, unless they are there already. --cache
// keeps the letters in mapped files in FOLDER/cache.
#include "demo/big_box.h"
#include "letters/letter_reader.h"
#include "letters/search.h"
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "store/archive_tables.h"
#include "store/schema.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>

namespace {

using namespace tolvek;

double secondsOf(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

long memoryMB(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name)) return std::atol(line.c_str() + name.size() + 1) / 1024;
    return 0;
}

// As the store has them.
Text storable(Text text)
{
    for (char16_t& c : text)
        if (c == u'\'') c = u'’';
    return text;
}

void storeLetter(Database& into, int number)
{
    const sample::SampleMail mail = sample::bigMail(number);
    const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(mail.time)};
    const auto second = (mail.time - std::chrono::floor<std::chrono::days>(mail.time)).count();
    const auto date = int{day.year()} * 10000 + static_cast<int>(unsigned{day.month()}) * 100 +
                      static_cast<int>(unsigned{day.day()});
    const auto time = second / 3600 * 10000 + second / 60 % 60 * 100 + second % 60;
    Text text;
    for (const Text& line : mail.letter.lines)
        text += line + u"\r\n";
    Statement sql{u"INSERT INTO tblTolvek (tblTolvek_YMD, tblTolvek_HMS, tblTolvek_SubKey, "
                  u"tblTolvek_SndRcvFlag, tblTolvek_SndName, tblTolvek_SndAdd, tblTolvek_RcvName, "
                  u"tblTolvek_RcvAdd, tblTolvek_Subject, tblTolvek_Mail1 ) VALUES( '"};
    sql << decimal(date) << u"', '" << Text(6 - decimal(time).size(), u'0') + decimal(time)
        << u"', 0, " << false << u", '" << storable(mail.from.name) << u"', '"
        << storable(mail.from.address) << u"', '" << storable(mail.to.name) << u"', '"
        << storable(mail.to.address) << u"', '" << storable(mail.letter.subject) << u"', '"
        << storable(text) << u"' )";
    into.Execute(sql, dbFailOnError);
}

void makeArchive(const Path& path, int first, int letters)
{
    Database made = DBEngine::Workspaces(0).CreateDatabase(pathText(path), u"");
    for (const TableSpec& spec : allTableSpecs())
        made.TableDefs().Append(tableDefinition(spec));
    inTransaction([&] {
        for (int number = first; number < first + letters; ++number)
            storeLetter(made, number);
    });
    made.Close();
}

std::vector<ArchiveFile> madeArchives(const Path& folder, int letters, int files)
{
    std::filesystem::create_directories(folder);
    for (int file = 0; file < files; ++file) {
        const Path path =
            folder /
            (file == 0 ? "Tolvek.Mdb" : "Tolvek_" + std::to_string(20000100 + file) + ".Mdb");
        if (!fileExists(path)) makeArchive(path, file * (letters / files), letters / files);
    }
    return archivesIn(folder);
}

// What the search must find, by another way: the texts as stored, one by one.
std::size_t plainlyFound(const Library& library, const Text& word)
{
    std::size_t found = 0;
    for (LetterId id = 0; id < library.size(); ++id) {
        const Letter letter = library.letter(id);
        for (const TextView field : {letter.subject, letter.senderName, letter.senderAddress,
                                     letter.receiverName, letter.receiverAddress, letter.text})
            if (field.find(word) != TextView::npos) {
                ++found;
                break;
            }
    }
    return found;
}

void releaseAll(const Library& library)
{
    for (const Library::Source& source : library.sources())
        source.letters->release();
}

// So that the peak is that of the search.
void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

void searchFor(const Library& library, const Text& word)
{
    const std::size_t plainly = plainlyFound(library, word);
    releaseAll(library);
    constexpr int kTimes = 5;
    std::vector<LetterId> found;
    double best = 1e9, slowest = 0;
    for (int time = 0; time < kTimes; ++time) {
        const double seconds = secondsOf([&] {
            found = matching(library, parseQuery(word));
            narrowed(library, found, {});
        });
        best = std::min(best, seconds);
        slowest = std::max(slowest, seconds);
    }
    std::printf("%-14s %8zu letters, plainly %8zu   %6.1f to %6.1f ms\n", toUtf8(word).c_str(),
                found.size(), plainly, best * 1000, slowest * 1000);
}

// Each keystroke of a word, as the window does it.
void type(const Library& library, const Text& word)
{
    std::vector<LetterId> found;
    LetterQuery before;
    for (std::size_t length = 1; length <= word.size(); ++length) {
        const LetterQuery query = parseQuery(word.substr(0, length));
        const double seconds = secondsOf([&] {
            found = length > 1 && isNarrower(query, before) ? matching(library, query, found)
                                                            : matching(library, query);
            narrowed(library, found, {});
        });
        before = query;
        std::printf("typed %-10s %6.1f ms, %zu letters\n", toUtf8(query.terms[0].written).c_str(),
                    seconds * 1000, found.size());
    }
}

void run(const Path& folder, int letters, int files, bool cached)
{
    const auto archives = madeArchives(folder, letters, files);
    const auto cache = cached ? std::make_unique<LetterCache>(folder / "cache") : nullptr;
    std::vector<Library::Source> sources(archives.size());
    const double reading = secondsOf([&] {
        for (std::size_t at = 0; at < archives.size(); ++at) {
            sources[at].status = {archives[at], ReadState::Read, 0, 0, {}};
            sources[at].letters = readLetterFile(archives[at].path, cache.get());
        }
    });
    std::shared_ptr<const Library> library;
    const double sorting = secondsOf([&] { library = std::make_shared<Library>(sources); });
    std::printf("%zu letters in %zu files: read and folded %.2f s, sorted with people %.2f s\n",
                library->size(), archives.size(), reading, sorting);
    for (const TextView word : {u"桜", u"本", u"写真", u"手紙", u"図書館で", u"カステラ",
                                u"ほにゃらら", u"e", u"friend12"})
        searchFor(*library, Text(word));
    releaseAll(*library);
    forgetPeak();
    type(*library, u"お花見");
    std::printf("memory now: %ld MB of its own, %ld MB of files; while typing at most %ld MB\n",
                memoryMB("RssAnon"), memoryMB("RssFile"), memoryMB("VmHWM"));
}

}

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("tolvek_letters_bench FOLDER [LETTERS [FILES [--cache]]]\n", stderr);
        return 2;
    }
    registerArchiveTables();
    try {
        run(argv[1], argc > 2 ? std::atoi(argv[2]) : 30000, argc > 3 ? std::atoi(argv[3]) : 1,
            argc > 4);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
