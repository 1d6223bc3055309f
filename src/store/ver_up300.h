// The upgrade of a database of an older version, whose mail and filter-result
// tables have no sub key and whose mail table has no include field: a new
// database is created and every row copied into it, one transaction a row.
//
// The old file stands as path + ".V300" from the renaming on and stays there
// after a success. While the new one isn't complete, a mark beside it says so
// (path + ".Upgrade"): it is set before the renaming and goes once every row is on
// the disk, so that a start after a cut-off upgrade knows which of the two files
// is the whole one. Whether an archive is to be upgraded is seen from its tables
// (isOldArchive), whatever `Ver` says. The upgrade holds a lock on the mark: without one it was cut
// off.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

// Where the progress lines go: the splash form's label.
using UpgradeProgress = std::function<void(TextView)>;

// Sets gDbPath. Without a database there a new one is made, and `Ver` stays. Any
// failure but a missing file is told and ends the program with the old database
// under its name, or with the mark set, and without `Ver`: the next start tries
// again.
void VerUp300(const UpgradeProgress& progress);

// The copy alone: from gDbPath + ".V300" into the new database at gDbPath. A
// failure is told, the old database put back under its name, and the program
// ended; without an old one it is error 53.
void Ver300_DBUpGrade(const UpgradeProgress& progress);

// At a start, before anything looks at the database and after restoreFromNew
// (where no database stands, a whole .New is newer than any .V300): an upgrade
// that was cut off (the mark is there; or there is no database but a .V300, and
// `Ver` is an old one) is undone, as a failed one is. An upgrade that another
// program is at is 3356. Asks and reports nothing; after a failure no start may go
// on to the upgrade, which would delete the .V300.
void settleCutOffUpgrade(const Text& path, bool isOldVersion);

}
