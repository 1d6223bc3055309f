// The routines that the whole program calls, and the state they share.
#pragma once
#include "platform/dao/dao.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/text.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace tolvek {

// The shared database objects, valid inside one routine only: whoever needs
// one opens it on gDbPath, works, and closes it.
extern Database gDb;
extern Workspace gWs;
extern Recordset gRs;
extern Text gDbPath;     // the live database, or the backup on display
extern Text gHelpPath;

// Box "エラーメッセージ (routine)" with number and description.
void ErrReport(TextView routine, const RuntimeError& error);
// The same; on 429 and 3356 the program ends, otherwise gDb is closed.
void ErrReportDb(TextView routine, const RuntimeError& error);

// The true number of rows; the recordset stands on its first row afterwards.
// Reports its own failures (beyond 32767 rows: error 6, gDb closed, count 32767).
void GET_RECCNT(Recordset& recordset, Int16& count);

// Waits that many milliseconds, yielding after each.
void SleepEX_Rtn(Int16 count);

// Decodes a text through the converter library (export Mail_StrChange).
void Mail_StrChange_Sub(const Text& source, Text& result);

// Replaces every occurrence of a piece by one of the same length, in place.
void StrChange(const Text& source, const Text& search, const Text& replacement, Int16 length, Text& result);

// What the key sender takes as literal text. "]" isn't in its list and stays bare.
void SendKeyEscape(const Text& source, Text& result);

// -1 when the file exists, else 0.
Int16 FileNameCheck(const Text& path);

// Names in `folder` with the extension, sorted descending by code unit.
void FileNameGet(const Text& folder, const Text& extension, std::int32_t limit, std::vector<Text>& list,
                 std::int32_t& count);

Text GetWinDir();
std::int32_t CopyFileA(const Text& source, const Text& target, std::int32_t failIfExists);

// Ends the program at once, in the middle of anything: database rolled back,
// closed and on the disk, text files closed, no destructor run.
[[noreturn]] void endProgram(int code = 0);
// Tests take the end over; the hook must throw or not return.
void setEndHook(std::function<void(int)> hook);

}
