// The two small tables behind the navigator list: every distinct name and
// every distinct address once. Rebuilt whole from tblTolvek, never updated.
//
// A failure is reported under the routine's name (ErrReportDb) and leaves the
// table short until the next rebuild.
#pragma once

namespace tolvek {

void edSearch_Name();
void edSearch_Addr();

}
