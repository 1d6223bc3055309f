#include "window/tips.h"

#include "window/frm_tolvek.h"

namespace tolvek {

namespace {

constexpr TextView kPickMail =
    u"件名一覧でメールを選んでから押します。選ばれていないときは、何も起きません。";

struct ButtonTip {
    CommandButton* frmTolvek::*button;
    TextView note;
};

constexpr ButtonTip kButtons[] = {
    {&frmTolvek::comMailRead,
     u"同じメールは 2 度保存されません。新しいメールがなければ、一覧は変わりません。\n"
     u"読み込みの記録は、TolvekRead.log に残ります。"},
    {&frmTolvek::cmdAddrDel,
     u"左の一覧で選んでから押します。選ばれていないときは、何も起きません。"},
    {&frmTolvek::comMailDel, kPickMail},
    {&frmTolvek::comSendMail, kPickMail},
};

struct MenuTip {
    MenuEntry* frmTolvek::*entry;
    TextView tip;
};

constexpr MenuTip kMenus[] = {
    {&frmTolvek::memDBSupport, u"データベースの書き出し、読み込み、再作成"},
    {&frmTolvek::memExport, u"6 つのテキスト ファイルに書き出します。データベースは変わりません。"},
    {&frmTolvek::memInport,
     u"データベースの中身を、書き出したテキスト ファイルの中身に置きかえます。\n"
     u"前のものは Tolvek.Mdb.BeforeLoad に残ります。"},
    {&frmTolvek::memDBEdit, u"すべてのデータを捨てて、空から始めます。修理ではありません。"},
    {&frmTolvek::memEnd, u"設定を書き、終わります。"},
    {&frmTolvek::memBackUp_FileEdit,
     u"すべてのメールをその日のファイルに移し、手もとを空にします。\n"
     u"終わりのメッセージは出ません。メールは「ファイル 選択」で見られます。"},
    {&frmTolvek::memNomalDisp, u"手もとのメールの表示に戻ります。\n"
                               u"すでに通常の表示なら、一覧を読みなおすだけです。"},
    {&frmTolvek::memBackUp_FileSelect, u"バックアップに移したメールを見ます。"},
    {&frmTolvek::memFriend, u"おともだち帳を見る、直す"},
    {&frmTolvek::memFriend_F, u"名前の順に並べて開きます。"},
    {&frmTolvek::memFriend_P, u"ペットの名前の順に並べて開きます。"},
    {&frmTolvek::memFriend_A, u"メールアドレスの順に並べて開きます。"},
    {&frmTolvek::memAddressAdd, u"選んだメールの相手を、おともだち帳に加えます。\n"
                                u"件名一覧が空のときは、何も起きません。"},
    {&frmTolvek::memFriendEd, u"おともだち帳の名前を、すべてのメールに付けなおします。\n"
                              u"終わりのメッセージは出ません。"},
    {&frmTolvek::memFilter, u"フィルターを作る、変える、消す"},
    {&frmTolvek::memFilterGo, u"フィルターの結果を作りなおします。終わりのメッセージは出ません。"},
    {&frmTolvek::memEnv, u"PostPet のフォルダー、あなたの名前とアドレス、本文の書体"},
    {&frmTolvek::memNameOrAddr,
     u"左の一覧を、アドレス、送受信者名、日付、フィルターの順に切り替えます。"},
};

}

void explainCommands(frmTolvek& form)
{
    for (const ButtonTip& tip : kButtons)
        (form.*tip.button)->setToolTipNote(tip.note);
    for (const MenuTip& tip : kMenus)
        (form.*tip.entry)->setToolTipText(tip.tip);
}

}
