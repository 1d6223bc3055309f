#include "store/db_compress.h"

#include "app/database.h"
#include "app/file_names.h"
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
#include "store/other_copies.h"
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
        : live_(linkedDatabase(path)), fresh_(sideFile(live_, kNewSuffix)),
          previous_(sideFile(live_, kBakSuffix))
    {
    }

    // staysAsItIs is the one condition among the steps: it is true for a read-only
    // database, whose compaction served as a check only.
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

    // Handles the failure of any step. A missing file (53) is expected on the first
    // run, which has no .Bak. A failure during the repair itself isn't handled here
    // again: it propagates to the caller.
    bool goesOn(const RuntimeError& error)
    {
        if (error.number() == 3343) {
            mend();
            return true;
        }
        if (error.number() != 53) ErrReportDb(u"dbCompress", error);
        return error.number() == 53;
    }

    // No is the default: Yes discards something for good, and a key press that was
    // meant for another window must not do that.
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

    // A .Bak that yields nothing is treated like a missing one.
    void restoreFromPrevious()
    {
        const Text side = sideFile(live_, kRepairSuffix);
        if (databaseExists(side)) removeDatabase(side); // of a repair that was cut off
        repair_ = repairedFrom(live_, previous_, side);
        if (repair_.isNothing())
            agreed(kAnew) ? makeAnew() : refuse();
        else
            putRepaired(side);
    }

    // The repaired database is compacted once more, so that the rotation, which deletes
    // the .Bak, has a copy to put in place.
    void putRepaired(const Text& side)
    {
        keepBoth();
        replaceDatabase(side, live_);
        flushFolderOf(live_);
        if (repair_.salvaged > 0) listCorrespondents();
        begin();
        DBEngine::CompactDatabase(live_, fresh_);
    }

    // Must run before anything replaces or removes the two files. A .Bak that was
    // copied whole is in the repaired archive; it is kept only if it is a Jet file.
    void keepBoth()
    {
        keepDamaged(live_, live_);
        if (!databaseExists(previous_)) return;
        if (repair_.previousIsWhole)
            keepJetOriginal(previous_, live_);
        else
            keepDamaged(previous_, live_);
    }

    // Names and addresses of salvaged mails aren't in the .Bak's search tables. The
    // search tables can be rebuilt only for the store that the program has in use.
    void listCorrespondents() const
    {
        if (gDbPath != live_) return;
        edSearch_Name();
        edSearch_Addr();
    }

    // Kept quirk: the rotation goes on without a copy to put in place. It moves the
    // new empty database to .Bak, and the next opening offers to create one.
    void makeAnew()
    {
        keepBoth();
        if (databaseExists(previous_)) removeDatabase(previous_);
        removeDatabase(live_);
        Table_Create();
    }

    // The lock lasts until the rotation ends. No other program can store a mail between
    // the copy and the exchange, or delete the copy as its own leftover.
    void begin()
    {
        alone_.emplace(live_);
        deleteLeftover();
    }

    void deleteLeftover()
    {
        if (databaseExists(fresh_)) removeDatabase(fresh_);
    }

    // The copy gets the mode of P before it can replace P.
    void compact()
    {
        DBEngine::CompactDatabase(live_, fresh_);
        keepMode(live_, fresh_);
        keepJetOriginal(live_, live_);
    }

    // A read-only file isn't replaced: its user doesn't want it changed.
    bool staysAsItIs()
    {
        if (!databaseExists(live_) || !isReadOnlyDatabase(live_)) return false;
        step([&] { deleteLeftover(); });
        return true;
    }

    // If only the .Bak has mails, they may have been lost by mistake, or P may have been
    // replaced by another file. After a backup they are in the backup's file, with the
    // friends and rules of that day.
    bool previousIsNeeded() const
    {
        const Text& current = databaseExists(fresh_) ? fresh_ : live_;
        return databaseExists(previous_) && !holdsMail(current) && mayHoldMail(previous_) &&
               !isHeldElsewhere(previous_, live_);
    }

    void removePrevious()
    {
        if (previousIsNeeded())
            moveAside(previous_, sideFile(live_, kKeptSuffix));
        else
            removeDatabase(previous_);
    }

    // With a link P keeps its name until the compacted copy replaces it.
    void nameAsPrevious()
    {
        linked_ = linkDatabase(live_, previous_);
        if (linked_) return;
        renameDatabase(live_, previous_);
        yields_ = false; // there is no P until the last step, so nothing may end the program
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

    // No compacted copy. After a real rename P would be missing by now and the rename of
    // the copy would fail with 53; the linked exchange must end in the same way.
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
