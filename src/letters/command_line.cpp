#include "letters/command_line.h"

#include "letters/export.h"
#include "letters/letter_json.h"
#include "letters/letter_pages.h"
#include "letters/read_library.h"
#include "letters/search.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/process.h"
#include "store/archive_tables.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ostream>

namespace tolvek {

namespace {

enum ExitCode { kFound = 0, kNothing = 1, kUsage = 2, kFailed = 3 };

constexpr int kNap = 200; // milliseconds between two looks at a file that is being written

constexpr const char* kHelp =
    R"(Finds letters in the archives of Tolvek.

    TolvekLetters --find WORDS [--exact] [--sent | --received] [--json] [--in PATH]...
    TolvekLetters --export mbox|eml|text|html TARGET --find WORDS [...]

  --find WORDS   all words must occur; "a phrase", -without, from: to: year:
                 (差出人: 宛先: 年:); '' finds every letter
  --exact        case, width, kana and old kanji forms count
  --sent, --received
                 only letters of one direction
  --in PATH      an archive file, or a folder of archives; without it, the
                 folder of the program
  --copies       also searches copies (.Bak, .Kept, .BeforeLoad) of a folder
  --json         prints a JSON array, one letter a line, with its text
  --export FORM TARGET
                 writes an mbox, a new folder of .eml files, a UTF-8 text or
                 one HTML file; an existing file is replaced, a folder isn't
  --wait SECONDS how long to wait for an archive that is being written (60)

Exit codes: 0 found or exported, 1 nothing found, 2 wrong usage,
3 an archive couldn't be read or the export failed.
)";

struct WrongUsage {
    std::string what;
};

struct Orders {
    std::optional<std::string> words;
    bool exact = false, json = false, copies = false, help = false;
    std::optional<bool> sent;
    std::vector<std::string> places;
    std::optional<ExportForm> form;
    std::string target;
    int waitSeconds = 60;
};

class ArgumentList {
public:
    explicit ArgumentList(const std::vector<std::string>& arguments) : arguments_(arguments) {}
    bool next(std::string& argument)
    {
        if (at_ == arguments_.size()) return false;
        argument = arguments_[at_++];
        return true;
    }
    std::string valueOf(const std::string& option)
    {
        std::string value;
        if (!next(value)) throw WrongUsage{option + " needs a value"};
        return value;
    }

private:
    const std::vector<std::string>& arguments_;
    std::size_t at_ = 0;
};

ExportForm formOf(const std::string& name)
{
    constexpr std::array<std::pair<const char*, ExportForm>, 4> kForms{
        {{"mbox", ExportForm::Mbox},
         {"eml", ExportForm::EmlFolder},
         {"text", ExportForm::PlainText},
         {"html", ExportForm::Html}}};
    for (const auto& [known, form] : kForms)
        if (name == known) return form;
    throw WrongUsage{"unknown form: " + name};
}

int secondsOf(const std::string& text)
{
    const bool isNumber = !text.empty() && text.size() < 7 &&
                          text.find_first_not_of("0123456789") == std::string::npos;
    if (!isNumber) throw WrongUsage{"not a number of seconds: " + text};
    return std::atoi(text.c_str());
}

void takeOption(Orders& orders, const std::string& option, ArgumentList& rest)
{
    if (option == "--find") {
        const std::string words = rest.valueOf(option);
        orders.words = orders.words ? *orders.words + " " + words : words;
    } else if (option == "--exact") {
        orders.exact = true;
    } else if (option == "--json") {
        orders.json = true;
    } else if (option == "--copies") {
        orders.copies = true;
    } else if (option == "--sent" || option == "--received") {
        orders.sent = option == "--sent";
    } else if (option == "--in") {
        orders.places.push_back(rest.valueOf(option));
    } else if (option == "--export") {
        orders.form = formOf(rest.valueOf(option));
        orders.target = rest.valueOf(option);
    } else if (option == "--wait") {
        orders.waitSeconds = secondsOf(rest.valueOf(option));
    } else if (option == "--help") {
        orders.help = true;
    } else {
        throw WrongUsage{"unknown option: " + option};
    }
}

Orders ordersOf(const std::vector<std::string>& arguments)
{
    Orders orders;
    ArgumentList rest(arguments);
    for (std::string option; rest.next(option);)
        takeOption(orders, option, rest);
    if (!orders.words && !orders.help) throw WrongUsage{"--find is missing"};
    return orders;
}

std::vector<ArchiveFile> filesOf(const Orders& orders)
{
    std::vector<std::string> places = orders.places;
    if (places.empty()) places.push_back(toUtf8(appPath()));
    std::vector<ArchiveFile> files;
    for (const std::string& place : places) {
        const std::filesystem::path path = nativePath(fromUtf8(place));
        for (const ArchiveFile& file : archivesAt(path))
            files.push_back(file);
        if (!orders.copies || !std::filesystem::is_directory(path)) continue;
        for (const ArchiveFile& file : copiesIn(path))
            files.push_back(file);
    }
    if (files.empty()) throw RuntimeError(53, fromUtf8(places.front()));
    return files;
}

// One line of the list that is printed.
std::string listLine(const Library& library, LetterId id, const LetterQuery& query)
{
    const Letter letter = library.letter(id);
    const Text line = matchedLine(letter.text, query).line;
    return toUtf8(shownDate(letter)) + (letter.sent ? " -> " : " <- ") +
           toUtf8(library.people()[letter.person].name) + "  " + toUtf8(letter.subject) +
           (line.empty() ? std::string() : "  | " + toUtf8(line)) + "\n";
}

class Command {
public:
    Command(const Orders& orders, std::ostream& out, std::ostream& errors)
        : orders_(orders), out_(out), errors_(errors),
          query_(parseQuery(fromUtf8(*orders.words), orders.exact))
    {
    }

    int run()
    {
        library_ = readLibrary([this] { return filesOf(orders_); },
                               [this](const ArchiveFile& file) { return waitFor(file); });
        Narrowing narrowing;
        narrowing.sent = orders_.sent;
        found_ = narrowed(*library_, matching(*library_, query_), narrowing).letters;
        orders_.form ? takeOut() : print();
        if (tellFailures()) return kFailed;
        return found_.empty() ? kNothing : kFound;
    }

private:
    bool waitFor(const ArchiveFile& file)
    {
        if (waited_ == 0)
            errors_ << toUtf8(file.name()) << ": is being written, waiting" << std::endl;
        if (waited_ >= orders_.waitSeconds * 1000) return false;
        sleepMilliseconds(kNap);
        waited_ += kNap;
        return true;
    }

    void print()
    {
        if (orders_.json) out_ << "[\n";
        for (std::size_t at = 0; at < found_.size(); ++at)
            if (orders_.json)
                out_ << jsonLetter(*library_, found_[at], query_)
                     << (at + 1 < found_.size() ? ",\n" : "\n");
            else
                out_ << listLine(*library_, found_[at], query_);
        if (orders_.json) out_ << "]\n";
        out_.flush();
    }

    void takeOut()
    {
        if (found_.empty()) return;
        const std::vector<LetterId> oldestFirst(found_.rbegin(), found_.rend());
        exportLetters(*library_, oldestFirst, *orders_.form, nativePath(fromUtf8(orders_.target)));
        out_ << found_.size() << " letters: " << orders_.target << std::endl;
    }

    bool tellFailures()
    {
        bool any = false;
        for (const Library::Source& source : library_->sources()) {
            if (source.status.state != ReadState::Failed) continue;
            any = true;
            errors_ << toUtf8(source.status.file.name()) << ": " << source.status.error << " "
                    << toUtf8(source.status.description) << std::endl;
        }
        return any;
    }

    const Orders& orders_;
    std::ostream& out_;
    std::ostream& errors_;
    LetterQuery query_;
    std::shared_ptr<const Library> library_;
    std::vector<LetterId> found_;
    int waited_ = 0; // milliseconds
};

}

bool wantsCommandLine(const std::vector<std::string>& arguments)
{
    return std::any_of(arguments.begin(), arguments.end(),
                       [](const std::string& argument) { return argument.starts_with("--"); });
}

int runCommandLine(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& errors)
{
    try {
        const Orders orders = ordersOf(arguments);
        if (orders.help) {
            out << kHelp;
            return kFound;
        }
        registerArchiveTables();
        return Command(orders, out, errors).run();
    } catch (const WrongUsage& wrong) {
        errors << wrong.what << "\n\n" << kHelp;
        return kUsage;
    } catch (const RuntimeError& error) {
        errors << error.number() << " " << toUtf8(error.description()) << std::endl;
        return kFailed;
    } catch (const std::exception& failure) {
        errors << failure.what() << std::endl;
        return kFailed;
    }
}

}
