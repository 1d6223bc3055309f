#include "store/spoilt_texts.h"

#include "platform/dao/dao.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"

namespace tolvek {

void reportSpoiltTexts()
{
    const int count = DBEngine::takeSpoiltTexts();
    if (count == 0) return;
    MsgBox(u"元のデータベースに，壊れた文字のある項目が " + decimal(count) +
           u" 個ありました。\r\n   その部分は読めません。元のファイルはそのまま残っています。");
}

}
