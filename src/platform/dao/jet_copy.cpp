#include "platform/dao/jet_copy.h"

#include "platform/dao/jet_import.h"
#include "platform/dao/schema_check.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "platform/system/private_folder.h"

#include <utility>

namespace tolvek {

namespace {

class PrivateFolder {
public:
    PrivateFolder() : path_(asFileError([] { return makePrivateFolder(); })) {}
    ~PrivateFolder()
    {
        // What can't be removed is left to the system, which cleans its temporary folder.
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    std::filesystem::path file() const { return path_ / "Tolvek.Mdb"; }

private:
    std::filesystem::path path_;
};

// Opening the copy makes the engine checkpoint the log or roll back the journal.
void recover(const std::filesystem::path& source, const std::filesystem::path& copy)
{
    asFileError([&] {
        copyFileContents(source, copy, true);
        for (const char* suffix : {"-wal", "-journal"})
            if (fileExists(source.string() + suffix))
                copyFileContents(source.string() + suffix, copy.string() + suffix, true);
    });
    const auto recovered = Connection::open(copy);
    requireArchive(*recovered, 3343);
    recovered->close();
}

std::shared_ptr<Connection> copied(const std::filesystem::path& source)
{
    const PrivateFolder folder;
    if (isJetFile(source))
        importJet(source, folder.file());
    else
        recover(source, folder.file());
    return Connection::openCopy(folder.file(), source);
}

// A failure of the private copy is reported under the name of the file that was
// asked for. That file is there, so a 53 would be misread.
template <class Work> auto as(const std::filesystem::path& source, const Work& work)
{
    try {
        return work();
    } catch (const RuntimeError& error) {
        if (error.number() == 53) throw RuntimeError(75);
        if (error.number() == 3343) throw RuntimeError(3343, pathText(source));
        throw;
    }
}

}

std::shared_ptr<Connection> JetCopy::of(const std::filesystem::path& source)
{
    const FileStamp stamp =
        as(source, [&] { return asFileError([&] { return fileStamp(source); }); });
    const bool isSame = kept_ && kept_->isOpen() && kept_->path() == source && stamp == stamp_;
    if (isSame) return kept_;
    kept_.reset(); // databases that use it keep it alive
    kept_ = as(source, [&] { return copied(source); });
    stamp_ = stamp;
    return kept_;
}

void JetCopy::drop()
{
    if (const auto leaving = std::exchange(kept_, nullptr)) leaving->close();
}

}
