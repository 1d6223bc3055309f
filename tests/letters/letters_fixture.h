// Archives of a few letters, and their Library.
#pragma once
#include "letters/letter_reader.h"
#include "letters/library.h"
#include "support/archive_fixture.h"

#include <map>

namespace tolvek::test {

using Lines = std::vector<std::string>;

class LettersFixture : public ArchiveFixture {
protected:
    Path live() const { return folder / "Tolvek.Mdb"; }

    // An empty archive beside the live one.
    Text archive(const std::string& name) const
    {
        if (empty_.empty()) empty_ = readBytes(live());
        writeBytes(folder / name, empty_);
        return pathText(folder / name);
    }
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        empty_ = readBytes(live());
    }

    static Mail with(TextView subject, TextView text, TextView date = u"20000215")
    {
        Mail made = mail(u"hanako@example.jp", u"taro@example.jp", subject, date);
        made.Mail1 = text;
        return made;
    }
    static std::shared_ptr<const Library> libraryOf(const std::vector<Path>& files)
    {
        std::vector<Library::Source> sources;
        for (const Path& path : files) {
            Library::Source source;
            source.status.file.path = path;
            source.letters = readLetterFile(path);
            sources.push_back(std::move(source));
        }
        return std::make_shared<Library>(std::move(sources));
    }
    std::shared_ptr<const Library> library() const { return libraryOf({live()}); }

    static Lines subjectsOf(const Library& library)
    {
        Lines subjects;
        for (LetterId id = 0; id < library.size(); ++id)
            subjects.push_back(toUtf8(library.letter(id).subject));
        return subjects;
    }

private:
    mutable std::string empty_;
};

}
