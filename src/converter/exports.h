// The C exports of the converter library "Tolvek" and their records: the three
// that any such library has, and one for this program alone.
//
// Every record is a fixed field: the text, a NUL, blanks to the end. Paths are
// in the file system's own encoding, texts in code page 932. The functions
// never throw and never keep what they were given; their own return value
// means nothing where nothing is said of it.
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

// Turns one mail box (list file, mail file) into the temp file. count: mails
// written; 32767 when there are more, as the count can't hold them. status: 0
// when the conversion worked (also for an empty box), any other value when
// nothing can be read; written on every call. The last mail of a box that grows
// meanwhile may be half of one and is left for the next read.
TOLVEK_EXPORT int Tolvek_Edit(TolvekPath* listFile, TolvekPath* mailFile, TolvekPath* tempFile,
                              std::int16_t* count, std::int16_t* status);

// The same with paths of any length, each ended by a NUL. Returns 0, or the
// system's number of a failure that isn't this box's own: the device fails, or the
// temp file can't be written. A box that this user may not read is a status alone.
TOLVEK_EXPORT int Tolvek_EditFiles(const char* listFile, const char* mailFile, const char* tempFile,
                                   std::int16_t* count, std::int16_t* status);

// Writes the friend book of a folder into the temp file. count: friends written;
// with 0 of them nothing is written, and an older file stays. status: 0 when
// every file of the book was read, otherwise the folder isn't there, a file of
// it was left out (count tells the others'), or reading or writing failed. A
// file that would bring the book beyond 32767 friends is left out. Returns 0, or the
// system's number of what kept the temp file from being written.
TOLVEK_EXPORT int TolvekFriend_Edit(StrChangeRec* folder, StrChangeRec* tempFile,
                                    std::int16_t* count, std::int16_t* status);

// Decodes a text: encoded words (only in a text without line ends), then
// escapes, then the single quote. length: of the result, in characters.
TOLVEK_EXPORT int Mail_StrChange(StrChangeRec* input, StrChangeRec* output, std::int16_t* length);
}
