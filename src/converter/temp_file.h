// The temp file: "<Start>", then From, To, Subject, Date, Mail, the text and "<End>"
// of each mail, in code page 932 with CR LF.
//
// A label is followed by one separator character and no blank: the reader would count
// a blank as part of a subject. Subject precedes Date, as the reader checks for a
// duplicate when it has the date. Values are plain text already, so the length of
// encoded words doesn't matter.
//
// TempFile writes this file and that of the friend book under a temporary name;
// commit() renames it. Without commit() nothing is left. Throws std::system_error.
#pragma once
#include "converter/text_blocks.h"
#include "platform/runtime/text.h"
#include "platform/system/files.h"

#include <filesystem>
#include <string>

namespace tolvek {

struct TempMail {
    Text from, to, subject;
    std::string date;  // empty: the reader drops the mail
    std::string lines; // of the text, plain, in code page 932, each with LF
};

class TempFile {
public:
    explicit TempFile(std::filesystem::path path);
    ~TempFile();
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    void write(std::string_view bytes);
    void commit();

private:
    std::filesystem::path path_;
    std::filesystem::path side_;
    OpenFile file_;
    std::string buffer_;
    bool committed_ = false;
};

// The lines of one mail.
void writeMail(TempFile& temp, const TempMail& mail);

}
