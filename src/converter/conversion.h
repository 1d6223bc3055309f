// Converts one mail box to the temp file.
#pragma once
#include "converter/mail_file.h"
#include "converter/temp_file.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace tolvek {

enum class ConversionStatus : std::int16_t {
    Converted = 0,  // also for an empty box
    Unreadable = 1, // missing, or not recognised for certain
    Failed = 3,     // reading or writing failed; an older temp file is kept
    Incomplete = 4, // of a friend book: a file of it was left out
    Changing = 5    // rewritten while it was read; to be read another time
};

// What a box holds and the temp file doesn't, for the account of the read.
struct LeftOut {
    enum class Why : std::int32_t {
        NoDate = 1,         // a mail: the reader drops it
        StillGrowing = 2,   // the last mail of a box that grew meanwhile
        UnreadableFile = 3, // a file of a folder that is no mail, or can't be read
        NothingThere = 4    // neither a file nor a folder has the box's name
    };
    Why why;
    std::string what; // UTF-8: the mail's first header lines, or the file's name
};

struct Conversion {
    ConversionStatus status = ConversionStatus::Failed;
    std::int16_t count = 0; // 0 unless Converted or Incomplete; 32767 of more mails
    int mails = 0;          // that the box holds, written or not
    std::vector<LeftOut> leftOut = {};
    // With Failed: the cause, if it would affect every other box too; for a friend
    // book, why the temp file couldn't be written.
    std::error_code failure = {};
};

// The box is a file, or a folder of single messages. These are sorted by date, then by
// name; one without any date gets its file's.
//
// Memory use is bounded by the two largest mails. The last mail of a box that grows
// meanwhile is left out. Never throws std::system_error; that is Failed.
Conversion convertMailBox(const std::filesystem::path& mailFile,
                          const std::filesystem::path& tempFile);

TempMail convertMail(const RawMail& mail);

}
