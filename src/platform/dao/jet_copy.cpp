#include "platform/dao/jet_copy.h"

#include "platform/dao/jet_import.h"
#include "platform/dao/on_disk.h"
#include "platform/system/files.h"
#include "platform/system/private_folder.h"

#include <utility>

namespace tolvek {

namespace {

class PrivateFolder {
public:
    PrivateFolder() : path_(onDisk([] { return makePrivateFolder(); })) {}
    ~PrivateFolder()
    {
        // Whatever can't be removed is the temporary folder's own affair.
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    std::filesystem::path file() const { return path_ / "Tolvek.Mdb"; }

private:
    std::filesystem::path path_;
};

std::shared_ptr<Connection> copied(const std::filesystem::path& source)
{
    const PrivateFolder folder;
    importJet(source, folder.file());
    return Connection::openCopy(folder.file(), source);
}

// The file that was asked for is there: 53 of the files behind the scene would
// lead astray.
template <class Work> auto without53(const Work& work)
{
    try {
        return work();
    } catch (const RuntimeError& error) {
        if (error.number() == 53) throw RuntimeError(75);
        throw;
    }
}

}

std::shared_ptr<Connection> JetCopy::of(const std::filesystem::path& source)
{
    const FileStamp stamp = without53([&] { return onDisk([&] { return fileStamp(source); }); });
    const bool isSame = kept_ && kept_->isOpen() && kept_->path() == source && stamp == stamp_;
    if (isSame) return kept_;
    kept_.reset(); // databases that stand on it hold it themselves
    kept_ = without53([&] { return copied(source); });
    stamp_ = stamp;
    return kept_;
}

void JetCopy::drop()
{
    if (const auto leaving = std::exchange(kept_, nullptr)) leaving->close();
}

}
