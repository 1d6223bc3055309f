// Takes letters out of the archives: as mail, as text, as one page.
//
// The target is built beside its place, flushed and renamed when it is complete. A
// cancelled or failed export leaves nothing under the target's name (an older file there
// stays as it was) and no side file.
//
// The program reads an mbox or a folder of .eml back from either of its sides; so letters
// that are to be read again are exported sent and received ones apart.
//
// Other kinds of export (a book) use UnfinishedFile for the same promise.
//
// Uses only the Library, no database: may run in any thread.
#pragma once
#include "letters/library.h"
#include "letters/unfinished_file.h"

#include <filesystem>
#include <functional>

namespace tolvek {

enum class ExportForm {
    Mbox,      // one file of messages (message.h)
    EmlFolder, // a new folder with one .eml for each letter
    PlainText, // UTF-8, one file
    Html       // one file without anything outside it
};

// Called after each letter; false cancels.
using ExportProgress = std::function<bool(std::size_t done, std::size_t all)>;

// The letters in this order; pass oldest first for reading. True when the export is
// complete, false when it was cancelled. Failures are RuntimeError with the file's
// number (58: the folder exists already, 61: disk full, 75: no access).
bool exportLetters(const Library& library, const std::vector<LetterId>& letters, ExportForm form,
                   const std::filesystem::path& target, const ExportProgress& progress = {});

}
