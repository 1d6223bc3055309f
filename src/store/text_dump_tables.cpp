#include "store/text_dump_tables.h"

#include "store/schema.h"

namespace tolvek {

using enum DumpColumn;

// The columns of each file are those of its table, in the same order. Kept quirk: the odd
// capitals of file names and titles.

// All columns are texts here, even the sub key and the direction.
const TextDump& tblTolvekDump()
{
    static const TextDump dump{
        u"tblTolvek.Txt",
        Statement{u"SELECT * FROM tblTolvek ORDER By tblTolvek_YMD ASC, tblTolvek_HMS ASC, "
                  u"tblTolvek_SubKey ASC, tblTolvek_SndAdd ASC, tblTolvek_RcvAdd ASC"},
        Statement{u"DELETE FROM tblTolvek"},
        Statement{u"SELECT * FROM tblTolvek"},
        std::vector<DumpColumn>(tblTolvekSpec().fields.size(), BlankAsEmpty),
        u"tblTolvek_UnLoad",
        u"tblTolvek UnLoad",
        u"tblTolvek_Load",
        u"tblTolvek Load",
    };
    return dump;
}

const TextDump& tblSearch_AddressesDump()
{
    static const TextDump dump{
        u"tblSearch_Addr.Txt",
        Statement{u"SELECT * FROM tblSearch_Addresses ORDER By tblSearch_Addr_Data ASC"},
        Statement{u"DELETE FROM tblSearch_Addresses"},
        Statement{u"SELECT * FROM tblSearch_Addresses"},
        {Characters},
        u"tblSearch_Addresses_UnLoad",
        u"tblSearch Address UnLoad",
        u"tblSearch_Addresses_Load",
        u"tblSearch Address Load",
    };
    return dump;
}

const TextDump& tblSearch_NameDump()
{
    static const TextDump dump{
        u"tblSearch_Name.Txt",
        Statement{u"SELECT * FROM tblSearch_Name ORDER By tblSearch_Name_Data ASC"},
        Statement{u"DELETE FROM tblSearch_Name"},
        Statement{u"SELECT * FROM tblSearch_Name"},
        {Characters},
        u"tblSearch_Name_UnLoad",
        u"tblSearch Name UnLoad",
        u"tblSearch_Name_Load",
        u"tblsearch Name Load",
    };
    return dump;
}

const TextDump& tblFriendDump()
{
    static const TextDump dump{
        u"tblFriend.Txt",
        Statement{u"SELECT * FROM tblFriend ORDER By tblFriend_Address ASC"},
        Statement{u"DELETE FROM tblFriend"},
        Statement{u"SELECT * FROM tblFriend"},
        {Characters, Characters, Characters, Characters, Integer32},
        u"tblFriend_UnLoad",
        u"tblfriend UnLoad",
        u"tblFriend_Load",
        u"tblfriend Load",
    };
    return dump;
}

const TextDump& tblFilterDump()
{
    static const TextDump dump{
        u"tblFilter.txt",
        Statement{u"SELECT * FROM tblFilter ORDER By tblFilter_No ASC"},
        Statement{u"DELETE FROM tblFilter"},
        Statement{u"SELECT * FROM tblFilter"},
        {NumberedByTen, Integer16, Integer16, Characters, Characters},
        u"tblFilter_UnLoad",
        u"tblFilter UnLoad",
        u"tblFilter_Load",
        u"tblFilter Load",
    };
    return dump;
}

// Kept quirk: the rule's number (the second column) is written as stored, although
// tblFilter's unload renumbers the rules.
const TextDump& tblFilterDataDump()
{
    static const TextDump dump{
        u"tblFilterData.txt",
        Statement{u"SELECT * FROM tblFilterData ORDER By tblFilterDt_No ASC, tblFilterDt_Date ASC, "
                  u"tblFilterDt_Time ASC, tblFilterDt_SubKey ASC, tblFilterDt_SendAddr ASC, "
                  u"tblFilterDt_RecvAddr ASC"},
        Statement{u"DELETE FROM tblFilterData"},
        Statement{u"SELECT * FROM tblFilterData"},
        {CountedFrom0, Integer16, Characters, Characters, Integer16, Characters, Characters,
         Characters, Characters, Characters, Characters},
        u"tblFilterData_UnLoad",
        u"tblfilter Data UnLoad",
        u"tblFilterData_Load",
        u"tblfilter Data Load",
    };
    return dump;
}

std::vector<const TextDump*> allTextDumps()
{
    return {&tblTolvekDump(), &tblSearch_AddressesDump(), &tblSearch_NameDump(),
            &tblFriendDump(), &tblFilterDump(),           &tblFilterDataDump()};
}

}
