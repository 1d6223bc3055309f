#include "store/open_or_create.h"

#include "app/database.h"
#include "platform/dao/dao.h"
#include "platform/runtime/msg_box.h"
#include "store/table_create.h"

#include <functional>

namespace tolvek {

namespace {

void openOr(const std::function<bool()>& mayCreate)
{
    try {
        gDb = DBEngine::OpenDatabase(gDbPath);
        return;
    } catch (const RuntimeError& error) {
        if (error.number() != 3024 || !mayCreate()) throw;
    }
    Table_Create(); // reports its own failure; the opening then fails with 3024 again
    gDb = DBEngine::OpenDatabase(gDbPath);
}

}

void openOrAskToCreate(TextView title)
{
    openOr([&] {
        return MsgBox(u"ＤＢがありません。\r\nＤＢを作成しますか？", MsgButtons::YesNo, title) ==
               MsgAnswer::Yes;
    });
}

void openOrCreate()
{
    openOr([] { return true; });
}

}
