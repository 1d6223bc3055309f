#include "store/other_copies.h"

#include "app/file_names.h"
#include "platform/dao/jet_import.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "store/database_files.h"
#include "store/mail_set.h"

#include <algorithm>
#include <functional>

namespace tolvek {

namespace {

// The newest backup first: after a backup it is the one.
std::vector<Text> copiesBeside(const Text& live)
{
    std::vector<Text> names = dirAll(joinPath(appPath(), backUpName(u"*")));
    std::ranges::sort(names, std::greater<>());
    std::vector<Text> copies;
    for (const Text& name : names)
        copies.push_back(joinPath(appPath(), name));
    const Text folder = pathText(existingPath(live).parent_path());
    for (const Text& name : dirAll(sideFile(live, kKeptSuffix) + u"*"))
        copies.push_back(joinPath(folder, name));
    return copies;
}

// A file that can't be looked at may hold anything or nothing.
bool holdsAll(const Text& copy, const Text& database)
{
    try {
        return linkedDatabase(copy) == copy && !isJetFile(existingPath(copy)) &&
               holdsMailsFriendsAndRulesOf(copy, database);
    } catch (const std::exception&) {
        return false;
    }
}

}

bool isHeldElsewhere(const Text& database, const Text& live)
{
    return std::ranges::any_of(copiesBeside(live),
                               [&](const Text& copy) { return holdsAll(copy, database); });
}

}
