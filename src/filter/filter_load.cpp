#include "filter/filter_load.h"

#include "filter/filter_rules.h"
#include "store/text_dump.h"

namespace tolvek {

namespace {

// Kept: gNonCopyRule isn't emptied; the next tblFilter_Get fills it.
void reset()
{
    emptyFilterRules();
    gFilterRuleCnt = 0;
}

// Throws error 9 at the 257th record. That record isn't stored then, so the table never
// holds more rules than the array can.
void take(const FilterRecord& record)
{
    gFilterRule[gFilterRuleCnt] = {record.no, record.termsCode, record.actionCode, record.header,
                                   record.data};
    ++gFilterRuleCnt;
}

}

void tblFilter_Load()
{
    loadFilterTable({reset, take});
}

}
