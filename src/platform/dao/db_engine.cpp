#include "platform/dao/engine.h"
#include "platform/dao/jet_import.h"
#include "platform/dao/no_such_item.h"
#include "platform/dao/schema_check.h"

namespace tolvek {

Workspace DBEngine::Workspaces(int index)
{
    if (index != 0) throw noSuchItem();
    return {};
}

Database DBEngine::OpenDatabase(TextView path)
{
    Database opened;
    opened.state_ = std::make_shared<Database::State>(Engine::instance().acquire(absoluteOf(path)));
    return opened;
}

void DBEngine::setKnownTables(KnownTables known)
{
    tolvek::setKnownTables(std::move(known));
}

int DBEngine::takeSpoiltTexts()
{
    return takeSpoiltJetTexts();
}

void DBEngine::setArchiveTables(std::vector<TableDef> tables, IsArchive isArchive)
{
    tolvek::setArchiveTables(std::move(tables), std::move(isArchive));
}

DBEngine::Session::Session()
{
    Engine::instance().enterSession();
}

DBEngine::Session::~Session()
{
    try {
        Engine::instance().leaveSession();
    } catch (const RuntimeError&) {
        // Committed rows are complete in the file or in its log. The next opening
        // recovers them, or reports what is wrong with the disk.
    }
}

DBEngine::CommitGroup::CommitGroup(std::chrono::milliseconds longest)
{
    Engine::instance().enterGroup(longest);
}

DBEngine::CommitGroup::~CommitGroup()
{
    try {
        end();
    } catch (const RuntimeError&) {
        // A caller that needs to know of a failure has called end().
    }
}

void DBEngine::CommitGroup::end()
{
    Engine::instance().leaveGroup();
}

void DBEngine::Rest()
{
    Engine::instance().rest();
}

void DBEngine::Abandon()
{
    try {
        Engine::instance().abandon();
    } catch (const RuntimeError&) {
        // The program ends; the next opening recovers as after a kill.
    }
}

}
