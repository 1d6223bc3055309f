#include "store/schema.h"

#include <algorithm>

namespace tolvek {

namespace {

const Text kEmpty = u"\"\""; // a default value of an empty text, as the engine writes it

// The identity of a mail. Names and the subject aren't part of it: names may change
// later and the mail stays the same. The sub key separates mails of the same second
// that have different subjects.
const std::vector<Text> MailKey{u"tblTolvek_YMD",        u"tblTolvek_HMS",    u"tblTolvek_SubKey",
                                u"tblTolvek_SndRcvFlag", u"tblTolvek_SndAdd", u"tblTolvek_RcvAdd"};

// What came to the tables after version 2.10.
constexpr TextView kLaterFields[] = {u"tblTolvek_SubKey", u"tblTolvek_Include",
                                     u"tblFilterDt_SubKey"};

bool isLater(const FieldSpec& field)
{
    return std::ranges::find(kLaterFields, TextView(field.name)) != std::end(kLaterFields);
}

bool hasField(const TableDef& table, const FieldSpec& wanted)
{
    return std::ranges::any_of(table.Fields.items(), [&](const Field& field) {
        return isSameName(field.Name, wanted.name) && field.Type == wanted.type;
    });
}

std::vector<FieldSpec> mailBlocks()
{
    std::vector<FieldSpec> blocks;
    for (int n = 1; n <= kMailBlocks; ++n)
        blocks.push_back({u"tblTolvek_Mail" + decimal(n), dbMemo, 0, true, kEmpty});
    return blocks;
}

void appendIndex(TableDef& table, const Text& name, const std::vector<Text>& fields, bool primary)
{
    Index index = table.CreateIndex(name);
    index.Primary = primary;
    for (const Text& field : fields)
        index.Fields.Append(index.CreateField(field));
    table.Indexes.Append(index);
}

}

// The order of the fields is that of existing archives and of the text files.
//
// Texts are wider than what the import writes: 64 instead of 60 characters, 128 instead
// of 100 and the continuation mark. The lookups are for the lists by address and name.
TableSpec tblTolvekSpec()
{
    TableSpec table{u"tblTolvek",
                    {{u"tblTolvek_YMD", dbText, 16},
                     {u"tblTolvek_HMS", dbText, 16},
                     {u"tblTolvek_SubKey", dbInteger},
                     {u"tblTolvek_SndRcvFlag", dbBoolean},
                     {u"tblTolvek_SndName", dbText, 64},
                     {u"tblTolvek_SndAdd", dbText, 64},
                     {u"tblTolvek_RcvName", dbText, 64},
                     {u"tblTolvek_RcvAdd", dbText, 64},
                     {u"tblTolvek_Subject", dbText, 128, true, kEmpty}},
                    MailKey,
                    {{u"tblTolvek_BySndAdd", {u"tblTolvek_SndAdd"}},
                     {u"tblTolvek_ByRcvAdd", {u"tblTolvek_RcvAdd"}},
                     {u"tblTolvek_BySndName", {u"tblTolvek_SndName"}},
                     {u"tblTolvek_ByRcvName", {u"tblTolvek_RcvName"}}}};
    for (const FieldSpec& block : mailBlocks())
        table.fields.push_back(block);
    table.fields.push_back({u"tblTolvek_Include", dbText, 64, true, kEmpty});
    return table;
}

TableSpec tblSearch_AddressesSpec()
{
    return {u"tblSearch_Addresses",
            {{u"tblSearch_Addr_Data", dbText, 64, true, kEmpty}},
            {u"tblSearch_Addr_Data"},
            {}};
}

TableSpec tblSearch_NameSpec()
{
    return {u"tblSearch_Name",
            {{u"tblSearch_Name_Data", dbText, 64, true, kEmpty}},
            {u"tblSearch_Name_Data"},
            {}};
}

TableSpec tblFriendSpec()
{
    return {u"tblFriend",
            {{u"tblFriend_PetKind", dbText, 64, true, kEmpty},
             {u"tblFriend_Pet", dbText, 64, true, kEmpty},
             {u"tblFriend_Name", dbText, 64, true, kEmpty},
             {u"tblFriend_Address", dbText, 64},
             {u"tblFriend_RecvMailCnt", dbLong}},
            {u"tblFriend_Address"},
            {}};
}

TableSpec tblFilterSpec()
{
    return {u"tblFilter",
            {{u"tblFilter_No", dbInteger},
             {u"tblFilter_TermsCode", dbInteger, 0, false, u"0"},
             {u"tblFilter_ActionCode", dbInteger, 0, false, u"0"},
             {u"tblFilter_Header", dbMemo},
             {u"tblFilter_Data", dbMemo}},
            {u"tblFilter_No"},
            {}};
}

// A row is a copy of a mail's identity and header fields, under field names of its own.
TableSpec tblFilterDataSpec()
{
    return {u"tblFilterData",
            {{u"tblFilterDt_Id", dbLong},
             {u"tblFilterDt_No", dbInteger},
             {u"tblFilterDt_Date", dbText, 16},
             {u"tblFilterDt_Time", dbText, 16},
             {u"tblFilterDt_SubKey", dbInteger},
             {u"tblFilterDt_SendName", dbText, 64},
             {u"tblFilterDt_SendAddr", dbText, 64},
             {u"tblFilterDt_RecvName", dbText, 64},
             {u"tblFilterDt_RecvAddr", dbText, 64},
             {u"tblFilterDt_SndRcvFlag", dbBoolean},
             {u"tblFilterDt_Subject", dbText, 128, true, kEmpty}},
            {u"tblFilterDt_Id"},
            {}};
}

std::vector<TableSpec> allTableSpecs()
{
    return {tblTolvekSpec(), tblSearch_AddressesSpec(), tblSearch_NameSpec(),
            tblFriendSpec(), tblFilterSpec(),           tblFilterDataSpec()};
}

TableDef tableDefinition(const TableSpec& spec)
{
    TableDef table(spec.name);
    for (const FieldSpec& wanted : spec.fields) {
        Field field = table.CreateField(wanted.name, wanted.type, wanted.size);
        field.AllowZeroLength = wanted.zeroLength;
        field.DefaultValue = wanted.defaultValue;
        table.Fields.Append(field);
    }
    appendIndex(table, spec.name, spec.key, true);
    for (const IndexSpec& lookup : spec.lookups)
        appendIndex(table, lookup.name, lookup.fields, false);
    return table;
}

TableSpec olderForm(TableSpec spec)
{
    std::erase_if(spec.fields, isLater);
    return spec;
}

bool isSameName(TextView a, TextView b)
{
    return lowerCase(a) == lowerCase(b);
}

bool isMade(const TableDef& table, const TableSpec& spec)
{
    return isSameName(table.Name, spec.name) && table.Fields.items().size() == spec.fields.size() &&
           std::ranges::all_of(spec.fields,
                               [&](const FieldSpec& field) { return hasField(table, field); });
}

}
