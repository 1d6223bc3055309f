// What the lines at the head of a mail look like, and what stands in their
// place in broken files.
//
// A mail's own field is one that a mail program writes and a letter's text
// hardly ever begins a line with: From, To, Date, Received and their kin.
#pragma once
#include "converter/line_source.h"

#include <string>
#include <string_view>

namespace tolvek {

bool isOwnField(std::string_view line);

// Lines of a mail's delivery that a file may hold in front of it: SMTP's
// commands and answers, a mail reader's "+OK".
bool isEnvelopeLine(std::string_view line);

// Fields up to an empty line.
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

    // What shows an Internet message wherever it stands.
    bool isOfMessage() const { return ended && (from || to) && (date || subject); }
    bool isMail() const { return ended && own >= 2; }
    // Enough to tell a mail from one that is quoted in a letter.
    bool isWholeMail() const { return isMail() && from && date && addressed && trace; }
};

// The block that begins `index` lines ahead; `first` is a line before it.
HeaderBlock blockAhead(LineSource& lines, std::size_t index, std::string_view first = {});

// A line that is no field, in a head: whether a mail's own field still comes
// before the empty line. The number of lines up to that field, or 0.
std::size_t linesToOwnField(LineSource& lines);

// Whether a line that is no field carries on the one before: a fold without
// its blank.
bool isBrokenFold(std::string_view before, std::string_view line);

// A line that was cut in the middle of raw JIS goes on with this one.
bool isCutJis(std::string_view before, std::string_view line);

}
