// A book of letters: title page, contents, a chapter for each year, page numbers.
//
// The letters come oldest first. The pages are set twice: once to learn on which page each
// chapter begins, once to paint. May run in any thread.
#pragma once
#include "letters/export.h"

#include <QString>

#include <filesystem>
#include <vector>

class QPagedPaintDevice;

namespace tolvek {

enum class BookPaper { A5, A4 };

struct BookSettings {
    BookPaper paper = BookPaper::A5;
    QString title;
};

struct BookChapter {
    int year = 0; // 0: letters whose year isn't known
    std::size_t received = 0, sent = 0;
    int page = 0; // counted from 1, the title page
};

struct BookPlan {
    std::vector<BookChapter> chapters;
    int pages = 0;
};

// False when it was cancelled; then, and after a failure, nothing is left under the
// target's name but what was there before. Failures are std::system_error or RuntimeError.
// plan: receives what was set.
bool writeBook(const Library& library, std::vector<LetterId> letters, const BookSettings& settings,
               const std::filesystem::path& target, const ExportProgress& progress = {},
               BookPlan* plan = nullptr);

// The letters alone, without title page, contents and chapters, on a device whose page
// size is set: a printer. False when it was cancelled.
bool printLetters(const Library& library, const std::vector<LetterId>& letters,
                  QPagedPaintDevice& device, const ExportProgress& progress = {});

}
