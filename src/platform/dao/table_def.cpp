#include "platform/dao/dao.h"

namespace tolvek {

Field::Field(TextView name, DataType type, int size) : Name(name), Type(type), Size(size) {}

void FieldList::Append(const Field& field)
{
    items_.push_back(field);
}

Index::Index(TextView name) : Name(name) {}

Field Index::CreateField(TextView name) const
{
    return Field(name, dbText, 0);
}

void IndexList::Append(const Index& index)
{
    items_.push_back(index);
}

TableDef::TableDef(TextView name) : Name(name) {}

Field TableDef::CreateField(TextView name, DataType type, int size) const
{
    return Field(name, type, size);
}

Index TableDef::CreateIndex(TextView name) const
{
    return Index(name);
}

}
