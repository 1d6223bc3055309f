// Gathers the account of one read from what its routines report: which boxes were
// chosen, what the converter said of each, what became of each mail.
//
// It only counts. Nothing that it is told changes the read, and it reports no failure.
#pragma once
#include "app/converter_library.h"
#include "app/read_log.h"
#include "platform/runtime/int16.h"
#include "platform/runtime/runtime_error.h"

namespace tolvek {

enum class MailFate { Stored, Known, KeptOut, NoDate, NoText, Failed };

class ReadAccount {
public:
    ReadAccount(); // now

    // All chosen boxes, in the order in which they will be read. One that the read
    // never reaches stays in the account as not read.
    void expectBox(TextView folder, TextView mailFile);
    void beginNextBox();
    void converted(Int16 count, Int16 status, const ConverterNotes& notes);
    void conversionFailed(const RuntimeError& error);
    // detail: the rule for KeptOut, else the mail's heading lines, separated by LF.
    void mail(MailFate fate, const Text& detail);
    // hadFailure: mails of the box that weren't reported were cut off by it.
    void endBox(bool hadFailure);

    const ReadRecord& record() const { return record_; }

private:
    BoxRecord& box() { return record_.boxes[current_ - 1]; }
    void add(LeftThings& things, const Text& name);
    void takeNotes();
    void keepOut(const Text& rule);

    ReadRecord record_;
    std::size_t current_ = 0; // counted from 1
    std::size_t names_ = 0;
    ConverterNotes notes_;
};

// Appends the account to TolvekRead.log beside the database. A log that can't be
// written is lost silently: the read itself has succeeded.
void writeReadAccount(const ReadAccount& account);

}
