#include "import/mail_box_table.h"

namespace tolvek {

const MailBoxFiles kReceiveMainBox{u"受信リスト.ppl", u"受信メール.ppm"};
const MailBoxFiles kSendMainBox{u"送信リスト.ppl", u"送信メール.ppm"};

CheckedArray<MailBoxFiles, 16> gMailBoxTable;

void fillMailBoxTable()
{
    static constexpr TextView drawers[] = {
        u"ピンクの引出し", u"黄色の引出し", u"紫の引出し",   u"緑色の引出し", u"黒の引出し",
        u"水色の引出し",   u"赤の引出し",   u"茶色の引出し", u"橙色の引出し",
    };
    gMailBoxTable = {};
    int row = 0;
    for (TextView drawer : drawers) {
        const Text name(drawer);
        gMailBoxTable[row++] = {name + u"リスト.ppl", name + u".ppm"};
    }
}

}
