#include "friend/friend_names.h"

#include "app/database.h"
#include "app/guard.h"
#include "app/settings.h"
#include "platform/forms/input_box.h"
#include "platform/forms/input_hold.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "store/subject_keys.h"

namespace tolvek {

namespace {

// A mail signed with the name of the friend's pet was written by the pet and keeps its
// name.
void nameSender(const Text& name, const Text& address, const Text& pet)
{
    Statement sql{u"UPDATE tblTolvek SET "};
    sql << u" tblTolvek_SndName = '" << name << u"' WHERE tblTolvek_SndAdd = '" << address
        << u"' AND ( tblTolvek_SndName <> '" << pet << u"' )";
    executeInTransaction(sql);
}

// Kept: a blank after the address. The store ignores trailing blanks in comparisons.
void nameReceiver(const Text& name, const Text& address)
{
    Statement sql{u"UPDATE tblTolvek SET "};
    sql << u" tblTolvek_RcvName = '" << name << u"' WHERE tblTolvek_RcvAdd = '" << address
        << u" ' ";
    executeInTransaction(sql);
}

void nameMailsOfFriend()
{
    const Text address = gRs.field(u"tblFriend_Address").text();
    Text name = gRs.field(u"tblFriend_Name").text();
    // Kept: a friend without a name gets the text for "not set".
    if (trim(name).empty()) name = u"設定無し";
    nameSender(name, address, gRs.field(u"tblFriend_Pet").text());
    nameReceiver(name, address);
}

// Mail from the user's address to itself was sent by the user's pet.
void nameOwnPet()
{
    Statement sql{u"UPDATE tblTolvek SET "};
    sql << u" tblTolvek_SndName = '" << gMyPetName << u"' WHERE tblTolvek_SndAdd = '" << gMyMailAddr
        << u"' AND tblTolvek_RcvAdd = '" << gMyMailAddr << u"'";
    executeInTransaction(sql);
}

struct Correspondent {
    Text name, address;
};

Correspondent correspondentOf(Int16 row)
{
    const SubjectKey& mail = SubjectRowLocate(row);
    // SndRcvFlag is set for sent mail, whose other party is the receiver.
    return mail.SndRcvFlag ? Correspondent{trim(mail.RcvName), trim(mail.RcvAdd)}
                           : Correspondent{trim(mail.SndName), trim(mail.SndAdd)};
}

bool isWanted(bool known, const Correspondent& who)
{
    const Text question = known ? u"メールアドレスがすでに登録されています。\r\n"
                                  u"御友達の名前を変更しますか？"
                                : u"おともだち帳に登録して宜しいですか。";
    return MsgBox(question + u"\r\n\r\nおともだちの名前：" + who.name +
                      u"\r\nおともだちのメールアドレス：" + who.address,
                  MsgButtons::YesNo, u"おともだち登録") == MsgAnswer::Yes;
}

// False when the user cancels or enters only blanks.
bool askForName(Text& name)
{
    name = trim(InputBox(u"おともだちの名前を変えたい場合はここで変更できます。",
                         u"おともだちの名前変更", name));
    return !name.empty();
}

void renameFriend(const Correspondent& who)
{
    Statement sql{u"UPDATE tblFriend SET "};
    sql << u" tblFriend_Name = '" << who.name << u"' WHERE tblFriend_Address = '" << who.address
        << u"' ";
    executeInTransaction(sql);
}

void insertFriend(const Correspondent& who)
{
    Statement sql{u"INSERT INTO tblFriend "};
    sql << u"( tblFriend_PetKind, " << u"tblFriend_Pet, " << u"tblFriend_Name, "
        << u"tblFriend_Address, " << u"tblFriend_RecvMailCnt  ) " << u"VALUES( '','', '" << who.name
        << u"', '" << who.address << u"', 0 )";
    executeInTransaction(sql);
}

}

bool findFriend(const Text& address)
{
    Statement sql{u"SELECT * FROM tblFriend"};
    sql << u" WHERE (" << u" tblFriend_Address = '" << address << u"' )";
    gRs = gDb.OpenRecordset(sql, dbOpenDynaset);
    Int16 count = 0;
    GET_RECCNT(gRs, count);
    return count != 0;
}

void setName(const Text& address, Text& name)
{
    leaveOnError(u"setName", [&] {
        gDb = DBEngine::OpenDatabase(gDbPath);
        if (findFriend(address)) {
            name = gRs.field(u"tblFriend_Name").text();
            if (name.empty()) name = gRs.field(u"tblFriend_Pet").text();
        }
        gDb.Close();
    });
}

void edFriendName()
{
    leaveOnError(u"edFriendName", [] {
        openArchive();
        Statement sql{u"SELECT * FROM tblFriend"};
        sql << u" ORDER By tblFriend_Name ASC, " << u"tblFriend_Address ASC";
        for (gRs = gDb.OpenRecordset(sql, dbOpenDynaset); !gRs.Eof(); DoEvents()) {
            nameMailsOfFriend();
            gRs.MoveNext();
        }
        // Without a pet's name, these mails keep the name they have.
        if (!trim(gMyPetName).empty()) nameOwnPet();
        gDb.Close();
    });
}

// Kept: when the user declines, gDb stays open; the next routine opens it anew.
Int16 FriendNameAdd(frmTolvek& /*form*/, Int16 row)
{
    const InputHold hold; // the commands are enabled
    Int16 unchanged = 0;
    // Kept: failures are reported under the name of the routine above.
    leaveOnError(u"edFriendName", [&] {
        Correspondent who = correspondentOf(row);
        openArchive();
        const bool known = findFriend(who.address);
        if (!isWanted(known, who) || !askForName(who.name)) {
            unchanged = 1;
            return;
        }
        known ? renameFriend(who) : insertFriend(who);
        gDb.Close();
    });
    return unchanged;
}

}
