// A converter library that returns what it was given, to check the records.
#include "converter/exports.h"

#include <cstring>
#include <string>

namespace {

std::size_t sizeUpToNul(const char* bytes, std::size_t size)
{
    const void* nul = std::memchr(bytes, 0, size);
    return nul ? static_cast<std::size_t>(static_cast<const char*>(nul) - bytes) : size;
}

template <class Record> std::int16_t textSize(const Record* record)
{
    return static_cast<std::int16_t>(sizeUpToNul(record->bytes, sizeof record->bytes));
}

bool blanksBehindNul(const char* bytes, std::size_t size)
{
    for (std::size_t i = sizeUpToNul(bytes, size) + 1; i < size; ++i)
        if (bytes[i] != ' ') return false;
    return true;
}

}

// count: bytes of the list file's path; status: 0 when every record is well formed.
int Tolvek_Edit(TolvekPath* listFile, TolvekPath* mailFile, TolvekPath* tempFile,
                std::int16_t* count, std::int16_t* status)
{
    *count = textSize(listFile);
    *status = 0;
    for (const TolvekPath* path : {listFile, mailFile, tempFile})
        if (!blanksBehindNul(path->bytes, sizeof path->bytes)) *status = 1;
    return 0;
}

int TolvekFriend_Edit(StrChangeRec* folder, StrChangeRec* tempFile, std::int16_t* count,
                      std::int16_t* status)
{
    *count = textSize(folder);
    *status = textSize(tempFile);
    return 28; // which means nothing
}

// Returns the text unchanged; the length counts one-byte characters.
int Mail_StrChange(StrChangeRec* input, StrChangeRec* output, std::int16_t* length)
{
    *output = *input;
    *length = textSize(input);
    return 0;
}
