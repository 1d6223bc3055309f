#include "platform/dao/engine.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"

namespace tolvek {

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
