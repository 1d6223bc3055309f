#include "filter/filter_load.h"

#include "filter/filter_rules.h"
#include "store/text_dump.h"

namespace tolvek {

namespace {

void reset()
{
    emptyFilterRules();
    gFilterRuleCnt = 0;
}

// Error 9 at the 257th: its row isn't stored then, so that the table never
// holds more than memory can take.
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
