#include "letters/export.h"

#include "letters/letter_pages.h"
#include "letters/message.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"

#include <array>
#include <cstdio>

namespace tolvek {

namespace {

constexpr std::size_t kBuffer = 1 << 20;

// Calls `each` for every letter. False if it was cancelled.
template <class Each>
bool forLetters(const Library& library, const std::vector<LetterId>& letters,
                const ExportProgress& progress, const Each& each)
{
    for (std::size_t done = 0; done < letters.size(); ++done) {
        each(library.letter(letters[done]), done);
        if (progress && !progress(done + 1, letters.size())) return false;
    }
    return true;
}

class Output {
public:
    explicit Output(const std::filesystem::path& path) : file_(path, OpenFile::Mode::Anew) {}
    void write(std::string_view bytes)
    {
        buffer_ += bytes;
        if (buffer_.size() >= kBuffer) empty();
    }
    void close()
    {
        empty();
        file_.close();
    }

private:
    void empty()
    {
        file_.write(buffer_);
        buffer_.clear();
    }
    OpenFile file_;
    std::string buffer_;
};

std::string written(const Letter& letter, ExportForm form)
{
    if (form == ExportForm::Mbox) return asMboxEntry(letter);
    return form == ExportForm::Html ? htmlArticle(letter) : plainPage(letter);
}

bool exportFile(const Library& library, const std::vector<LetterId>& letters, ExportForm form,
                const std::filesystem::path& target, const ExportProgress& progress)
{
    UnfinishedFile unfinished(target);
    Output out(unfinished.path());
    if (form == ExportForm::Html) out.write(htmlBeginning());
    const bool isWhole =
        forLetters(library, letters, progress,
                   [&](const Letter& letter, std::size_t) { out.write(written(letter, form)); });
    if (!isWhole) return false;
    if (form == ExportForm::Html) out.write(htmlEnd());
    out.close();
    unfinished.finish();
    return true;
}

// In the order of the letters, also where names are sorted.
std::string messageName(const Letter& letter, std::size_t number)
{
    std::string name;
    for (const char16_t c : Text(letter.date) + u"-" + Text(letter.time))
        name += (c >= u'0' && c <= u'9') || c == u'-' ? static_cast<char>(c) : '0';
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%06zu-", number + 1);
    return digits.data() + name + ".eml";
}

bool exportFolder(const Library& library, const std::vector<LetterId>& letters,
                  const std::filesystem::path& target, const ExportProgress& progress)
{
    if (entryExists(target))
        throw std::system_error(std::make_error_code(std::errc::file_exists), target.string());
    UnfinishedFile unfinished(target);
    std::filesystem::create_directory(unfinished.path());
    const bool isWhole =
        forLetters(library, letters, progress, [&](const Letter& letter, std::size_t number) {
            OpenFile out(unfinished.path() / messageName(letter, number),
                         OpenFile::Mode::CreateNew);
            out.write(asMessage(letter));
            out.close();
        });
    if (!isWhole) return false;
    flushFileSystemOf(unfinished.path());
    unfinished.finishFolder();
    return true;
}

}

bool exportLetters(const Library& library, const std::vector<LetterId>& letters, ExportForm form,
                   const std::filesystem::path& target, const ExportProgress& progress)
{
    return asFileError([&] {
        return form == ExportForm::EmlFolder ? exportFolder(library, letters, target, progress)
                                             : exportFile(library, letters, form, target, progress);
    });
}

}
