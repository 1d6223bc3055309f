// An archive, a user and a temp file for the tests of the import.
//
// Reports are collected as "routine number"; any that a test didn't take with
// takeReports() fails it at its end.
#pragma once
#include "app/test_hooks.h"
#include "filter/filter_rules.h"
#include "platform/runtime/codepage932.h"
#include "support/archive_fixture.h"
#include "support/report_list.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvek::test {

class ImportTest : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gMyMailAddr = u"me@home.jp";
        gMyMailHandle = u"ぼく";
        gNonCopyRuleCnt = 0;
        fillMonthNames();
        watchDecoding();
        reports_.listen();
    }
    void TearDown() override
    {
        EXPECT_EQ(takeReports(), Reports{});
        gNonCopyRuleCnt = 0;
        ArchiveFixture::TearDown();
    }

    Reports takeReports() { return reports_.take(); }

    // The texts passed to the converter since the test began.
    const std::vector<Text>& decoded() const { return decoded_; }
    void onDecode(std::function<void()> look) { onDecode_ = std::move(look); }

    static Text tmpPath() { return joinPath(appPath(), u"Tolvek.Tmp"); }
    void givenTmp(const Text& content) const { writeBytes(file("Tolvek.Tmp"), toAnsi(content)); }
    void givenTmpLines(const std::vector<Text>& lines) const
    {
        Text content;
        for (const Text& line : lines)
            content += line + Text(kCrLf);
        givenTmp(content);
    }

    // A column of tblTolvek in key order, and the column of its only row.
    static std::vector<Text> column(TextView field)
    {
        Database opened = DBEngine::OpenDatabase(gDbPath);
        std::vector<Text> texts;
        Recordset found = opened.OpenRecordset(Statement{u"SELECT * FROM tblTolvek"});
        for (; !found.Eof(); found.MoveNext())
            texts.push_back(found.field(field).text());
        opened.Close();
        return texts;
    }
    static Text stored(TextView field)
    {
        const std::vector<Text> texts = column(field);
        EXPECT_EQ(texts.size(), 1U);
        return texts.empty() ? Text() : texts.front();
    }

private:
    // As in the real library's record: a NUL ends the text, and it holds 4608 bytes.
    void watchDecoding()
    {
        ConverterLibrary library = givingBack();
        library.Mail_StrChange = [this](const Text& source, Text& result, Int16& length) {
            decoded_.push_back(source);
            if (onDecode_) onDecode_();
            result = fromAnsi(ansiPrefix(cutAtNul(source), kTextRecordSize));
            std::replace(result.begin(), result.end(), u'\'', u'’');
            length = static_cast<int>(result.size());
        };
        hooks::setConverterLibrary(std::move(library));
    }

    ReportList reports_;
    std::vector<Text> decoded_;
    std::function<void()> onDecode_;
};

}
