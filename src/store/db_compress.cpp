#include "store/db_compress.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/program_end.h"
#include "app/reports.h"
#include "platform/dao/alone.h"
#include "platform/dao/dao.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "store/database_files.h"
#include "store/db_start.h"
#include "store/kept_files.h"
#include "store/repair.h"
#include "store/search_tables.h"
#include "store/spoilt_texts.h"
#include "store/table_create.h"

#include <optional>

namespace tolvek {

namespace {

constexpr TextView kRepair = u"DBの読み込み中にエラーが発生しました。\r\n"
                             u"   BackUpファイルから修復しますか？";
constexpr TextView kAnew = u"DBの読み込み中にエラーが発生しました。\r\n"
                           u"   新しい DB を作りますか？";

class Compaction {
public:
    explicit Compaction(const Text& path)
        : live_(linkedDatabase(path)), fresh_(live_ + u".New"), previous_(live_ + u".Bak")
    {
    }

    void run()
    {
        step([&] { begin(); }) && step([&] { compact(); }) && !staysAsItIs() &&
            step([&] { removePrevious(); }) && step([&] { nameAsPrevious(); }) &&
            step([&] { putInPlace(); });
    }

private:
    // False when the routine ends here.
    template <class Work> bool step(Work work)
    {
        try {
            work();
        } catch (const std::exception& failure) {
            if (!goesOn(asRuntimeError(failure))) return false;
        }
        if (yields_) DoEvents();
        return true;
    }

    // The one judge of all steps. A file that isn't there is the normal case of
    // the first run, which has no .Bak. What fails while a damaged database is
    // mended isn't judged here again: it goes to whoever called.
    bool goesOn(const RuntimeError& error)
    {
        if (error.number() == 3343) {
            mend();
            return true;
        }
        if (error.number() != 53) ErrReportDb(u"dbCompress", error);
        return error.number() == 53;
    }

    // Whatever the answer throws away for good, an idle key press doesn't.
    static bool agreed(TextView question)
    {
        return MsgBox(question, MsgButtons::YesNo, kApplicationTitle, MsgIcon::None,
                      MsgAnswer::No) == MsgAnswer::Yes;
    }

    void mend()
    {
        if (databaseExists(previous_))
            agreed(kRepair) ? restoreFromPrevious() : refuse();
        else
            agreed(kAnew) ? makeAnew() : refuse();
    }

    [[noreturn]] static void refuse()
    {
        MsgBox(u"DB が壊れています\r\n   修復が必要です。");
        endProgram();
    }

    // A .Bak that gives nothing any more is as none at all.
    void restoreFromPrevious()
    {
        const Text side = live_ + u".Repair";
        if (databaseExists(side)) removeDatabase(side);
        repair_ = repairedFrom(live_, previous_, side);
        if (repair_.isNothing())
            agreed(kAnew) ? makeAnew() : refuse();
        else
            putRepaired(side);
    }

    // Compacted twice, so that the rotation, which deletes the .Bak, finds a copy to
    // move into place.
    void putRepaired(const Text& side)
    {
        keepBoth();
        replaceDatabase(side, live_);
        flushFolderOf(live_);
        if (repair_.salvaged > 0) listCorrespondents();
        begin();
        DBEngine::CompactDatabase(live_, fresh_);
    }

    // Before anything takes their names.
    void keepBoth()
    {
        keepDamaged(live_, live_);
        if (!databaseExists(previous_)) return;
        if (repair_.previousIsWhole)
            keepJetOriginal(previous_, live_);
        else
            keepDamaged(previous_, live_);
    }

    // Those of the mails that the .Bak didn't have.
    void listCorrespondents() const
    {
        if (gDbPath != live_) return;
        edSearch_Name();
        edSearch_Addr();
    }

    // The rotation then goes on without a copy to put in place: it moves the new
    // empty database to .Bak, and the next opening offers to create one.
    void makeAnew()
    {
        keepBoth();
        if (databaseExists(previous_)) removeDatabase(previous_);
        removeDatabase(live_);
        Table_Create();
    }

    // Nobody stores a mail in the database between its copy and the exchange, nor
    // takes the copy for a leftover of his own.
    void begin()
    {
        alone_.emplace(live_);
        deleteLeftover();
    }

    void deleteLeftover()
    {
        if (databaseExists(fresh_)) removeDatabase(fresh_);
    }

    void compact()
    {
        DBEngine::CompactDatabase(live_, fresh_);
        keepMode(live_, fresh_);
        keepJetOriginal(live_, live_);
    }

    // A file that its user doesn't want to be written isn't exchanged either.
    bool staysAsItIs()
    {
        if (!databaseExists(live_) || !isReadOnlyDatabase(live_)) return false;
        step([&] { deleteLeftover(); });
        return true;
    }

    // Mails that are gone from the database may be gone by mistake, or it may be
    // another one than it was.
    void removePrevious()
    {
        const Text& current = databaseExists(fresh_) ? fresh_ : live_;
        if (databaseExists(previous_) && !holdsMail(current) && mayHoldMail(previous_))
            moveAside(previous_, live_ + u".Kept");
        else
            removeDatabase(previous_);
    }

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
    Repair repair_;
    std::optional<Alone> alone_;
    bool linked_ = false;
    bool yields_ = true;
};

}

void dbCompress(const Text& path)
{
    Compaction(path).run();
    reportSpoiltTexts();
}

}
