#include "platform/dao/dao_errors.h"
#include "platform/dao/engine.h"
#include "platform/dao/jet_import.h"
#include "platform/dao/schema_check.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

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

void Workspace::BeginTrans()
{
    Engine::instance().begin();
}

void Workspace::CommitTrans()
{
    Engine::instance().commit();
}

void Workspace::Rollback()
{
    Engine::instance().rollback();
}

// The sort order is ignored, since there is only one.
Database Workspace::CreateDatabase(TextView path, TextView)
{
    const std::filesystem::path file = absoluteOf(path);
    if (fileExists(file) || folderExists(file)) throw RuntimeError(3204);
    Database created;
    created.state_ = std::make_shared<Database::State>(Engine::instance().created(file));
    return created;
}

void inTransaction(const std::function<void()>& work)
{
    Workspace workspace = DBEngine::Workspaces(0);
    workspace.BeginTrans();
    work();
    workspace.CommitTrans();
}

}
