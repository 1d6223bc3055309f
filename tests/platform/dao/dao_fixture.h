// A database with two small tables, in its own folder.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/files.h"
#include "platform/system/test_hooks.h"
#include "support/errors.h"
#include "support/temp_folder.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace tolvek::test {

template <class Work> Text errorTextOf(const Work& work)
{
    try {
        work();
    } catch (const RuntimeError& error) {
        return error.description();
    }
    return {};
}

class DaoTest : public testing::Test {
protected:
    DaoTest() { createTables(path()); }
    ~DaoTest() override
    {
        hooks::setFileProbe({});
        DBEngine::Abandon();
    }

    Text path(const std::string& name = "Test.Mdb") const { return pathText(folder_ / name); }
    Database opened() const { return DBEngine::OpenDatabase(path()); }

    // tblMail: a text key, a number, a Yes/No, two texts, two memos, and a text after
    // them. tblBook: only a text key.
    static void createTables(const Text& path)
    {
        Database database =
            DBEngine::Workspaces(0).CreateDatabase(path, u";LANGID=0x0409;CP=1252;COUNTRY=0");
        database.TableDefs().Append(mailTable(database));
        TableDef book = database.CreateTableDef(u"tblBook");
        Field name = book.CreateField(u"Book_Name", dbText, 64);
        name.AllowZeroLength = true;
        name.DefaultValue = u"\"\"";
        book.Fields.Append(name);
        appendKey(book, {u"Book_Name"});
        database.TableDefs().Append(book);
        database.Close();
    }

    static TableDef mailTable(const Database& database)
    {
        TableDef table = database.CreateTableDef(u"tblMail");
        table.Fields.Append(table.CreateField(u"Mail_Day", dbText, 8));
        table.Fields.Append(table.CreateField(u"Mail_No", dbInteger));
        table.Fields.Append(table.CreateField(u"Mail_Sent", dbBoolean));
        Field subject = table.CreateField(u"Mail_Subject", dbText, 10);
        subject.AllowZeroLength = true;
        subject.DefaultValue = u"\"\"";
        table.Fields.Append(subject);
        table.Fields.Append(table.CreateField(u"Mail_Count", dbLong));
        Field text = table.CreateField(u"Mail_Text1", dbMemo);
        text.AllowZeroLength = true;
        table.Fields.Append(text);
        table.Fields.Append(table.CreateField(u"Mail_Text2", dbMemo));
        Field include = table.CreateField(u"Mail_Include", dbText, 64);
        include.AllowZeroLength = true;
        table.Fields.Append(include);
        appendKey(table, {u"Mail_Day", u"Mail_No", u"Mail_Sent"});
        return table;
    }

    static void appendKey(TableDef& table, std::initializer_list<TextView> columns)
    {
        Index index = table.CreateIndex(table.Name);
        index.Primary = true;
        for (const TextView column : columns)
            index.Fields.Append(index.CreateField(column));
        table.Indexes.Append(index);
    }

    static void addMail(Database& database, const Text& day, int number, const Text& subject = u"s")
    {
        Statement sql{u"INSERT INTO tblMail (Mail_Day, Mail_No, Mail_Sent, Mail_Subject, "
                      u"Mail_Text1) VALUES( '"};
        sql << day << u"', " << number << u", False, '" << subject << u"', 'text')";
        database.Execute(sql, dbFailOnError);
    }

    static int rows(Database& database, const Statement& sql)
    {
        Recordset all = database.OpenRecordset(sql);
        if (!all.Eof()) all.MoveLast();
        return all.RecordCount();
    }
    int mails() const
    {
        Database database = opened();
        const int count = rows(database, Statement{u"SELECT * FROM tblMail"});
        database.Close();
        return count;
    }

    std::vector<std::string> files() const
    {
        auto names = fileNames(folder_.path());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string bytes() const { return readBytes(folder_ / "Test.Mdb"); }
    // From the header: 1 with the rollback journal, 2 with the write-ahead log.
    int journalManner() const { return static_cast<unsigned char>(bytes().at(18)); }

    TempFolder folder_;
};

using Names = std::vector<std::string>;

}
