// Which files hold letters: the archive in use, its dated backups, archives of older
// versions and Jet files in one folder, or files that the user chose.
//
// Only names are looked at here; nothing is opened.
#pragma once
#include "platform/runtime/text.h"

#include <filesystem>
#include <vector>

namespace tolvek {

enum class ArchiveKind {
    Live,   // Tolvek.Mdb
    Backup, // Tolvek_yyyymmdd.Mdb and any other *.Mdb, newest name first
    Older,  // Tolvek.Mdb.V300
    Jet,    // Tolvek.Mdb.Jet, .JetN
    Copy,   // .Bak, .BeforeLoad, .Kept, .HalfLoaded, numbered ones too
    Chosen  // named by the user
};

struct ArchiveFile {
    std::filesystem::path path;
    ArchiveKind kind = ArchiveKind::Chosen;
    Text name() const; // without the folder, for display
};

// Everything that belongs to the archive of this folder, in the order of their
// precedence: live, backups, older, Jet. Copies aren't among them: they hold mails that
// the user has deleted since. A folder that can't be listed gives std::system_error.
std::vector<ArchiveFile> archivesIn(const std::filesystem::path& folder);
// The copies, for a user who looks for a lost mail.
std::vector<ArchiveFile> copiesIn(const std::filesystem::path& folder);
// A file as chosen; a folder gives its archives.
std::vector<ArchiveFile> archivesAt(const std::filesystem::path& chosen);

}
