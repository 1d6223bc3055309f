// The C exports of the converter library "Tolvek" and their records: the three of the
// established interface, and two for this program alone.
//
// Every record is a fixed field: the text, a NUL, blanks to the end. Paths are in the
// file system's encoding, texts in code page 932. The functions never throw and keep
// no pointer; their return value has a meaning only where one is stated.
#pragma once
#include <cstdint>

#if defined(_WIN32)
#define TOLVEK_EXPORT __declspec(dllexport)
#else
#define TOLVEK_EXPORT __attribute__((visibility("default")))
#endif

extern "C" {

struct TolvekPath {
    char bytes[256];
};

struct StrChangeRec {
    char bytes[4608];
};

// Converts one mail box (list file, mail file) to the temp file. count: mails written,
// at most 32767, even if there are more. status: 0 if the conversion worked (also for
// an empty box), any other value if nothing can be read; written on every call. The
// last mail of a box that grows meanwhile may be incomplete and is left for the next
// read.
TOLVEK_EXPORT int Tolvek_Edit(TolvekPath* listFile, TolvekPath* mailFile, TolvekPath* tempFile,
                              std::int16_t* count, std::int16_t* status);

// The same with paths of any length, each ended by a NUL. Returns 0, or the system's
// error number if the failure isn't limited to this box: the device fails, or the temp
// file can't be written. A box that this user may not read gives a status alone.
TOLVEK_EXPORT int Tolvek_EditFiles(const char* listFile, const char* mailFile, const char* tempFile,
                                   std::int16_t* count, std::int16_t* status);

// What a box holds and the temp file doesn't.
enum TolvekLeftOut {
    TolvekNoDate = 1,         // a mail without any date; the reader drops it
    TolvekStillGrowing = 2,   // the last mail of a box that grew meanwhile
    TolvekUnreadableFile = 3, // a file of a folder of single messages
    TolvekNothingThere = 4    // there is no such box
};

// why: a TolvekLeftOut. what: UTF-8, ended by a NUL: the mail's first header lines, each
// but the last with LF, or the file's name; valid during the call only. Must not throw.
typedef void TolvekNote(void* context, std::int32_t why, const char* what);

// Tolvek_EditFiles with an account: mails receives how many the box holds, which may be
// more than `count` can tell, and note is called for each thing left out, after the
// temp file is in place. Either may be null.
TOLVEK_EXPORT int Tolvek_EditNoted(const char* listFile, const char* mailFile, const char* tempFile,
                                   std::int16_t* count, std::int16_t* status, std::int32_t* mails,
                                   TolvekNote* note, void* context);

// Writes the friend book of a folder to the temp file. count: friends written; if
// there are none, nothing is written and an older file is kept. status: 0 if every
// file of the book was read; otherwise the folder is missing, a file was left out
// (count is that of the others), or reading or writing failed. A file that would bring
// the book above 32767 friends is left out. Returns 0, or the system's error number if
// the temp file couldn't be written.
TOLVEK_EXPORT int TolvekFriend_Edit(StrChangeRec* folder, StrChangeRec* tempFile,
                                    std::int16_t* count, std::int16_t* status);

// Decodes a text: encoded words (only in a text without line ends), then JIS escapes,
// then the single quote. length: of the result, in characters.
TOLVEK_EXPORT int Mail_StrChange(StrChangeRec* input, StrChangeRec* output, std::int16_t* length);
}
