#include "store/db_compress.h"

#include "platform/dao/dao.h"
#include "platform/forms/do_events.h"
#include "shell/base/general.h"
#include "shell/base/guard.h"
#include "store/database_files.h"

namespace tolvek {

namespace {

class Compaction {
public:
    explicit Compaction(const Text& path)
        : live_(path), fresh_(path + u".New"), previous_(path + u".Bak")
    {
    }

    void run()
    {
        step([&] { deleteLeftover(); }) && step([&] { compact(); }) &&
            step([&] { removeDatabase(previous_); }) && step([&] { nameAsPrevious(); }) &&
            step([&] { putInPlace(); });
    }

private:
    // False when the routine ends here. A file that isn't there is the normal
    // case of the first run, which has no .Bak.
    template <class Work> bool step(Work work)
    {
        try {
            work();
        } catch (const std::exception& failure) {
            const RuntimeError error = asRuntimeError(failure);
            if (error.number() != 53) {
                ErrReportDb(u"dbCompress", error);
                return false;
            }
        }
        if (yields_) DoEvents();
        return true;
    }

    void deleteLeftover()
    {
        if (databaseExists(fresh_)) removeDatabase(fresh_);
    }

    void compact() { DBEngine::CompactDatabase(live_, fresh_); }

    void nameAsPrevious()
    {
        linked_ = linkDatabase(live_, previous_);
        if (linked_) return;
        renameDatabase(live_, previous_);
        yields_ = false; // nothing stands under the name until the last step
    }

    void putInPlace()
    {
        yields_ = true;
        if (!linked_)
            renameDatabase(fresh_, live_);
        else if (databaseExists(fresh_))
            replaceDatabase(fresh_, live_);
        else
            missingFresh();
        flushFolderOf(live_);
    }

    // Renamed and not merely linked, the old name would be gone by now.
    [[noreturn]] void missingFresh()
    {
        removeDatabase(live_);
        throw RuntimeError(53);
    }

    Text live_, fresh_, previous_;
    bool linked_ = false;
    bool yields_ = true;
};

}

void dbCompress(const Text& path)
{
    Compaction(path).run();
}

}
