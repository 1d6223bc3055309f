// The two small tables that the navigator list shows: every distinct name and every
// distinct address once. They are always rebuilt from tblTolvek, never updated.
//
// A failure is reported under the routine's name (ErrReportDb) and leaves the table
// incomplete until the next rebuild.
#pragma once

namespace tolvek {

void edSearch_Name();
void edSearch_Addr();

}
