#include "letters/archives.h"

#include "platform/runtime/paths.h"
#include "platform/system/files.h"

#include <algorithm>
#include <optional>

namespace tolvek {

namespace {

constexpr TextView kLive = u"tolvek.mdb";

// The name after `beginning`, if it is a plain suffix with or without a number.
bool isNumbered(TextView name, TextView beginning)
{
    if (!name.starts_with(beginning)) return false;
    const TextView rest = name.substr(beginning.size());
    return std::all_of(rest.begin(), rest.end(), [](char16_t c) { return c >= u'0' && c <= u'9'; });
}

std::optional<ArchiveKind> kindOf(TextView fileName)
{
    const Text name = lowerCase(fileName);
    if (name == kLive) return ArchiveKind::Live;
    if (name.ends_with(u".mdb")) return ArchiveKind::Backup;
    if (name == u"tolvek.mdb.v300") return ArchiveKind::Older;
    if (isNumbered(name, u"tolvek.mdb.jet")) return ArchiveKind::Jet;
    for (const TextView copy : {u"tolvek.mdb.bak", u"tolvek.mdb.beforeload", u"tolvek.mdb.kept",
                                u"tolvek.mdb.halfloaded"})
        if (isNumbered(name, copy)) return ArchiveKind::Copy;
    return std::nullopt;
}

// Of backups the newest first: it has the friends' latest names.
bool comesBefore(const ArchiveFile& a, const ArchiveFile& b)
{
    if (a.kind != b.kind) return a.kind < b.kind;
    return a.kind == ArchiveKind::Backup ? a.name() > b.name() : a.name() < b.name();
}

std::vector<ArchiveFile> filesIn(const std::filesystem::path& folder, bool copies)
{
    std::vector<ArchiveFile> files;
    for (const std::string& name : fileNames(folder)) {
        const auto kind = kindOf(fromUtf8(name));
        if (kind && (*kind == ArchiveKind::Copy) == copies)
            files.push_back({folder / std::filesystem::path(name), *kind});
    }
    std::sort(files.begin(), files.end(), comesBefore);
    return files;
}

}

Text ArchiveFile::name() const
{
    return pathText(path.filename());
}

std::vector<ArchiveFile> archivesIn(const std::filesystem::path& folder)
{
    return filesIn(folder, false);
}

std::vector<ArchiveFile> copiesIn(const std::filesystem::path& folder)
{
    return filesIn(folder, true);
}

std::vector<ArchiveFile> archivesAt(const std::filesystem::path& chosen)
{
    if (folderExists(chosen)) return archivesIn(chosen);
    return {{chosen, ArchiveKind::Chosen}};
}

}
