#include "friend/ed_friend.h"

#include "app/converter_library.h"
#include "app/database.h"
#include "app/file_names.h"
#include "app/guard.h"
#include "app/settings.h"
#include "friend/friend_names.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/text_files.h"

namespace tolvek {

namespace {

struct PetKind {
    TextView code;
    TextView kind;
};

// Code 5 doesn't exist.
constexpr PetKind kPetKinds[] = {
    {u"1", u"くま"},     {u"2", u"うさぎ"},     {u"3", u"かめ"},     {u"4", u"ねこ"},
    {u"6", u"ロボット"}, {u"7", u"ハムスター"}, {u"8", u"ペンギン"}, {u"9", u"いぬ"},
};

Text codeOf(TextView kind)
{
    for (const PetKind& pet : kPetKinds)
        if (pet.kind == kind) return Text(pet.code);
    return u"0";
}

Text kindOf(TextView code)
{
    for (const PetKind& pet : kPetKinds)
        if (pet.code == code) return Text(pet.kind);
    return {};
}

constexpr TextView kFriendBook = u"おともだち帳";

struct FriendRecord {
    Text petKind, pet, name, address;
    Int16 mails;
};

FriendRecord readRecord(Int16 number)
{
    FriendRecord record;
    // The order in which the library writes the fields.
    for (Text* field : {&record.petKind, &record.pet, &record.name, &record.address})
        *field = inputText(number);
    record.mails = inputInt16(number);
    return record;
}

// Searches in text mode, so full-width forms match too. Each search continues after the
// last replacement; from the start it would find the full-width bar just inserted for
// ever.
void replaceEach(Text& text, TextView character, TextView replacement)
{
    for (int p = inStr(text, character, Compare::TextMode); p != 0;
         p = inStr(text, character, Compare::TextMode, p + 1))
        text = left(text, p - 1) + Text(replacement) + mid(text, p + 1);
}

void cleanName(Text& name)
{
    replaceEach(name, u"'", u"’");
    replaceEach(name, u"\"", u"’");
    replaceEach(name, u"|", u"｜");
}

void insertFriend(FriendRecord record)
{
    Text kind;
    edPetKind(0, record.petKind, kind);
    cleanName(record.pet);
    cleanName(record.name);
    Statement sql{u"INSERT INTO tblFriend "};
    sql << u"(tblFriend_PetKind, " << u"tblFriend_Pet, " << u"tblFriend_Name, "
        << u"tblFriend_Address, " << u"tblFriend_RecvMailCnt ) " << u"VALUES( '" << kind << u"', '"
        << trim(record.pet) << u"', '" << trim(record.name) << u"', '" << trim(record.address)
        << u"', " << record.mails << u" )";
    executeInTransaction(sql);
}

// Kept: the address is looked up as it is and stored trimmed. Nothing is replaced in
// it, so an address with a single quote fails here.
void takeRecords(Int16 number)
{
    for (; !endOfFile(number); DoEvents())
        if (const FriendRecord record = readRecord(number); !findFriend(record.address))
            insertFriend(record);
}

}

void edPetKind(Int16 toCode, const Text& source, Text& result)
{
    result = toCode != 0 ? codeOf(source) : kindOf(source);
}

// Only the count tells whether the file was written by this call; an old file may
// exist.
void edFriend()
{
    leavePlainOnError(u"edFriend", [] {
        const Text temp = joinPath(appPath(), kFriendTempName);
        Int16 count = 0, second = 0;
        converterLibrary().TolvekFriend_Edit(joinPath(gPostPetDir, kFriendBook), temp, count,
                                             second);
        if (count > 0) tmpFriend(temp);
    });
}

bool tmpFriend(const Text& path)
{
    const Text file = cutAtNul(path);
    Int16 number = 0;
    bool readToEnd = false;
    leaveOnError(u"tmpFriend", [&] {
        if (dir(file).empty()) return;
        number = freeFile();
        openForInput(file, number);
        DoEvents();
        openArchive();
        takeRecords(number);
        gDb.Close();
        readToEnd = true;
    });
    // Closed whatever happened. If the open failed, this does nothing.
    closeFile(number);
    return readToEnd;
}

}
