// Recognises the lines of a mail's head, and what broken files have instead.
//
// A mail's own field is one that mail programs write and that the text of a letter
// hardly ever begins a line with: From, To, Date, Received and the like.
#pragma once
#include "converter/line_source.h"

#include <string>
#include <string_view>

namespace tolvek {

bool isOwnField(std::string_view line);

// Lines of a mail's delivery that a file may have before it: SMTP commands and
// replies, a POP server's "+OK".
bool isEnvelopeLine(std::string_view line);

// A block of fields up to an empty line.
struct HeaderBlock {
    std::size_t lines = 0; // without the empty line
    std::size_t bytes = 0;
    int own = 0;        // a mail's own fields among them
    bool ended = false; // by an empty line or the end of the file
    bool from = false;
    bool to = false;
    bool subject = false;
    bool date = false;      // a Date that can be read
    bool addressed = false; // To, Cc or Subject
    bool trace = false;     // what programs add: Received, Message-ID, MIME-Version and so on

    // Enough to recognise an Internet message anywhere in a file.
    bool isOfMessage() const { return ended && (from || to) && (date || subject); }
    bool isMail() const { return ended && own >= 2; }
    // Enough to distinguish a mail from one that is quoted in a letter.
    bool isWholeMail() const { return isMail() && from && date && addressed && trace; }
};

// The block that begins `index` lines ahead; `first`, if given, is the line before it.
HeaderBlock blockAhead(LineSource& lines, std::size_t index, std::string_view first = {});

// For a line in a head that is no field: the number of lines up to and including the
// next of a mail's own fields; 0 if an empty line comes first, or none is near.
std::size_t linesToOwnField(LineSource& lines);

// Whether a line that is no field continues the one before: a fold without its blank.
bool isBrokenFold(std::string_view before, std::string_view line);

// Whether `before` was cut in the middle of raw JIS that this line continues.
bool isCutJis(std::string_view before, std::string_view line);

}
