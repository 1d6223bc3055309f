// The upgrade of an older database, whose mail and filter-result tables have no sub key
// and whose mail table has no include field. A new database is created and every row
// copied into it, one transaction per row.
//
// The old file is renamed to path + ".V300" and stays there after a success. While the
// new file is incomplete there is a mark beside it (path + ".Upgrade"). It is set before
// the rename and removed when every row is on the disk, so that a start after a cut-off
// upgrade knows which of the two files is the whole one. A running upgrade holds a lock
// on the mark; a mark without a lock is from an upgrade that was cut off. Whether an
// archive needs the upgrade is decided by its tables (isOldArchive), not by `Ver`.
#pragma once
#include "platform/runtime/text.h"

#include <functional>

namespace tolvek {

// Receives the progress lines; the splash form shows them in a label.
using UpgradeProgress = std::function<void(TextView)>;

// Sets gDbPath. If there is no database, a new one is created and `Ver` isn't written.
// A missing file is ignored. Any other failure is reported and ends the program; `Ver`
// isn't written, and either the old database has its own name again or the mark is
// set, so the next start tries again.
void VerUp300(const UpgradeProgress& progress);

// Only the copy: from gDbPath + ".V300" into the new database at gDbPath. After a
// failure it is reported, the old database gets its own name back, and the program
// ends; if there is no old database, throws error 53 instead.
void Ver300_DBUpGrade(const UpgradeProgress& progress);

// Undoes an upgrade that was cut off, as a failed one is undone. There was one if the
// mark exists, or if there is no database but a .V300 and `Ver` is an old one. Call at
// a start, before the database is opened and after restoreFromNew: without a database,
// a whole .New is newer than any .V300. Error 3356 while another program is upgrading.
// Asks and reports nothing. After a failure the start must not go on to the upgrade,
// which would delete the .V300.
void settleCutOffUpgrade(const Text& path, bool isOldVersion);

}
