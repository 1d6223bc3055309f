// An archive and the filter editor operated by its user: the steps run while the dialog
// is shown, on the real controls.
#pragma once
#include "filter/filter_rules.h"
#include "filter/frm_filter.h"
#include "many_rules.h"
#include "platform/forms/events.h"
#include "support/archive_fixture.h"
#include "support/dialog_checks.h"
#include "support/modal_script.h"
#include "support/screen_driver.h"

#include <functional>
#include <vector>

namespace tolvek::test {

class FilterDialogs : public ArchiveFixture {
protected:
    void SetUp() override
    {
        ArchiveFixture::SetUp();
        gFilterRule = {};
        gNonCopyRule = {};
        gFilterRuleCnt = 0;
        gNonCopyRuleCnt = 0;
        gFilterRulesWhole = true;
        gEditCancel = 0;
        setEndFunction([] { throw ProgramEnd{0}; });
    }
    void TearDown() override
    {
        setEndFunction({});
        gEditCancel = 0;
        ArchiveFixture::TearDown();
    }

    // Sorting rules with these titles, numbered by 10 from `first` on. Each has its own
    // code and "title-data" as its condition.
    static void givenSorting(const std::vector<Text>& titles, int first = 10)
    {
        int no = first;
        for (const Text& title : titles) {
            addFilter(no, no / 10 % 6, 0, title, title + u"-data");
            no += 10;
        }
    }
    static void givenNotRead(const std::vector<Text>& titles, int first)
    {
        int no = first;
        for (const Text& title : titles) {
            addFilter(no, 0, 1, title, title + u"-data");
            no += 10;
        }
    }
    static std::vector<Text> storedTitles()
    {
        return column(u"SELECT tblFilter_Header FROM tblFilter ORDER By tblFilter_No ASC");
    }
    static std::vector<Text> storedNumbers()
    {
        return column(u"SELECT tblFilter_No FROM tblFilter ORDER By tblFilter_No ASC");
    }

    // Expects the box of an untrapped failure; the end of the program follows.
    void expectUntrapped(int number)
    {
        boxes.expect(u"実行時エラー '" + decimal(number) + u"':\r\n\r\n" + errorText(number),
                     MsgAnswer::Ok, u"Tolvek");
    }

    static std::vector<Text> titles(const Grid& grid)
    {
        std::vector<Text> texts;
        for (int row = 1; row < grid.Rows(); ++row)
            texts.push_back(grid.TextMatrix(row, 0));
        return texts;
    }
    // The index of the set button, -1 for none.
    template <std::size_t N> static int setIn(const CheckedArray<OptionButton*, N>& options)
    {
        for (int i = 0; i < options.size(); ++i)
            if (options[i]->Value()) return i;
        return -1;
    }

    frmFilter editor;
};

}
