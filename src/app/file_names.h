// The names of the files in the program's folder. docs/store-format.md says what each of
// them is; a test compares its table with the suffixes here.
#pragma once
#include "platform/runtime/text.h"

#include <array>

namespace tolvek {

inline constexpr TextView kArchiveName = u"Tolvek.Mdb";
// The dated backup of a day (yyyymmdd); with "*" the pattern of all of them.
inline Text backUpName(TextView day)
{
    return u"Tolvek_" + Text(day) + u".Mdb";
}

// Side files: each has the archive's whole name and one of these.
inline constexpr TextView kBakSuffix = u".Bak";       // as it was before the last compaction
inline constexpr TextView kNewSuffix = u".New";       // a copy being made
inline constexpr TextView kWholeSuffix = u".Whole";   // a .New being checked
inline constexpr TextView kCreateSuffix = u".Create"; // a new archive being built
inline constexpr TextView kRepairSuffix = u".Repair"; // a repaired archive being built
inline constexpr TextView kBeforeLoadSuffix = u".BeforeLoad"; // as it was before a text import
inline constexpr TextView kRunningSuffix = u".Running";       // a mark at a .BeforeLoad
inline constexpr TextView kErrorsSuffix = u".Errors";         // a mark at a .BeforeLoad
inline constexpr TextView kHalfLoadedSuffix = u".HalfLoaded"; // from an import that was cut off
inline constexpr TextView kV300Suffix = u".V300";             // as it was before an upgrade
inline constexpr TextView kUpgradeSuffix = u".Upgrade";       // a mark: an upgrade is running
inline constexpr TextView kKeptSuffix = u".Kept";       // a .Bak that is the only one with mails
inline constexpr TextView kDamagedSuffix = u".Damaged"; // a damaged archive as it was found
inline constexpr TextView kJetSuffix = u".Jet";         // a Jet archive as it was found

inline constexpr std::array kSideSuffixes{
    kBakSuffix,     kNewSuffix,    kWholeSuffix,      kCreateSuffix, kRepairSuffix,
    kRunningSuffix, kErrorsSuffix, kHalfLoadedSuffix, kV300Suffix,   kBeforeLoadSuffix,
    kUpgradeSuffix, kKeptSuffix,   kDamagedSuffix,    kJetSuffix};

inline Text sideFile(const Text& path, TextView suffix)
{
    return path + Text(suffix);
}

// On their way into the archive: the mails of one box, and the friend book.
inline constexpr TextView kMailTempName = u"Tolvek.Tmp";
inline constexpr TextView kFriendTempName = u"Friend.Tmp";

// The friend book as edited, until it has been read in: before and after the table was
// emptied; and one that never was read in completely. None of these names ends in .tmp,
// which the exit deletes, or in .Mdb, which the backup list shows.
inline constexpr TextView kEditedBook = u"Friend.Book";
inline constexpr TextView kEditedBookRead = u"Friend.Book.Read";
inline constexpr TextView kEditedBookKept = u"Friend.Book.Kept";

inline constexpr TextView kSettingsName = u"TOLVEK.ini";
inline constexpr TextView kOldSettingsSuffix = u".Old"; // as they were when they couldn't be read

// What became of each mail of the last reads (read_log.h).
inline constexpr TextView kReadLogName = u"TolvekRead.log";

}
