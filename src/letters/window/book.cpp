#include "letters/window/book.h"

#include "letters/library.h"
#include "letters/unfinished_file.h"
#include "letters/window/file_device.h"
#include "letters/window/letter_texts.h"
#include "letters/window/page_setter.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/runtime_error.h"

#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <optional>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kA5Points = 9, kA4Points = 10.5, kPrintPoints = 10;
constexpr double kA5Margin = 16, kA4Margin = 24; // millimetres

QString bodyText(const Letter& letter)
{
    QString text = paintedText(letter.text);
    while (!text.isEmpty() && text.back().isSpace())
        text.chop(1);
    return text;
}

// A heading stays with the first lines of its letter.
void setLetter(PageSetter& setter, const PageFonts& fonts, const Library& library, LetterId id)
{
    const Letter letter = library.letter(id);
    const double points = fonts.text.pointSizeF();
    setter.skip(points * 1.8);
    setter.need(points * 9);
    setter.paragraph(longDate(letter) + u"　　"_s + namesText(library, letter), fonts.note);
    setter.paragraph(subjectText(letter), fonts.heading);
    setter.skip(points * 0.3);
    setter.paragraph(bodyText(letter), fonts.text);
}

// Counts both passes as one progress.
class Pass {
public:
    Pass(const ExportProgress& progress, std::size_t before, std::size_t all)
        : progress_(progress), done_(before), all_(all)
    {
    }
    bool step() { return !progress_ || progress_(++done_, all_); }

private:
    const ExportProgress& progress_;
    std::size_t done_, all_;
};

class BookMaker {
public:
    BookMaker(const Library& library, const std::vector<LetterId>& letters,
              const BookSettings& settings)
        : library_(library), letters_(letters), settings_(settings),
          fonts_(pageFonts(settings.paper == BookPaper::A4 ? kA4Points : kA5Points))
    {
        gatherChapters();
    }

    const BookPlan& plan() const { return plan_; }

    // Sets all pages; the chapters' pages are those of this pass. False when cancelled.
    bool set(QPagedPaintDevice& device, QPainter* painter, Pass& pass)
    {
        PageSetter setter(device, painter);
        setTitlePage(setter);
        setContents(setter);
        auto letter = letters_.begin();
        for (BookChapter& chapter : plan_.chapters) {
            beginChapter(setter, chapter);
            for (std::size_t left = chapter.received + chapter.sent; left > 0; --left) {
                setLetter(setter, fonts_, library_, *letter++);
                if (!pass.step()) return false;
            }
        }
        setter.finish();
        plan_.pages = setter.page();
        return true;
    }

private:
    void gatherChapters()
    {
        for (const LetterId id : letters_) {
            const int year = library_.monthOf(id) / 100;
            if (plan_.chapters.empty() || plan_.chapters.back().year != year)
                plan_.chapters.push_back({.year = year});
            ++(library_.isSent(id) ? plan_.chapters.back().sent : plan_.chapters.back().received);
        }
    }

    void setTitlePage(PageSetter& setter) const
    {
        setter.leaveOutNumber();
        setter.skipToShare(0.3);
        setter.paragraph(settings_.title, fonts_.title, Qt::AlignHCenter);
        setter.skip(20);
        setter.paragraph(periodText(), fonts_.heading, Qt::AlignHCenter);
        setter.skipToShare(0.85);
        setter.paragraph(countText(letters_.size()) + u" 通"_s, fonts_.note, Qt::AlignHCenter);
    }

    QString periodText() const
    {
        std::vector<int> years;
        for (const BookChapter& chapter : plan_.chapters)
            if (chapter.year != 0) years.push_back(chapter.year);
        if (years.empty()) return {};
        const auto [first, last] = std::ranges::minmax(years);
        return first == last ? yearText(first) : yearText(first) + u" ― "_s + yearText(last);
    }

    // In the first pass the numbers are still missing; the lines are as many.
    void setContents(PageSetter& setter) const
    {
        setter.beginPage();
        setter.paragraph(u"目次"_s, fonts_.chapter);
        setter.skip(14);
        for (const BookChapter& chapter : plan_.chapters)
            setter.dottedLine(yearText(chapter.year) + u"　"_s +
                                  countText(chapter.received + chapter.sent) + u" 通"_s,
                              QString::number(chapter.page), fonts_.text);
    }

    void beginChapter(PageSetter& setter, BookChapter& chapter) const
    {
        setter.beginPage();
        chapter.page = setter.page();
        setter.paragraph(yearText(chapter.year), fonts_.chapter);
        setter.skip(4);
        setter.paragraph(u"受け取った手紙 "_s + countText(chapter.received) +
                             u" 通　　出した手紙 "_s + countText(chapter.sent) + u" 通"_s,
                         fonts_.note);
        setter.skip(4);
        setter.rule();
    }

    const Library& library_;
    const std::vector<LetterId>& letters_;
    const BookSettings& settings_;
    PageFonts fonts_;
    BookPlan plan_;
};

void setPaper(QPdfWriter& pdf, const BookSettings& settings)
{
    const bool a4 = settings.paper == BookPaper::A4;
    pdf.setPageSize(QPageSize(a4 ? QPageSize::A4 : QPageSize::A5));
    const double margin = a4 ? kA4Margin : kA5Margin;
    pdf.setPageMargins(QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter);
    pdf.setTitle(settings.title);
    pdf.setCreator(u"TolvekLetters"_s);
}

bool paintBook(BookMaker& maker, FileDevice& file, const BookSettings& settings,
               const ExportProgress& progress, std::size_t letters)
{
    QPdfWriter pdf(&file);
    setPaper(pdf, settings);
    Pass measuring(progress, 0, 2 * letters);
    if (!maker.set(pdf, nullptr, measuring)) return false;
    QPainter painter;
    if (!painter.begin(&pdf)) throw RuntimeError(75);
    Pass painting(progress, letters, 2 * letters);
    return maker.set(pdf, &painter, painting) && painter.end();
}

}

bool writeBook(const Library& library, std::vector<LetterId> letters, const BookSettings& settings,
               const std::filesystem::path& target, const ExportProgress& progress, BookPlan* plan)
{
    // Letters without a year come last; the others are in order already.
    std::ranges::stable_partition(letters, [&](LetterId id) { return library.monthOf(id) >= 100; });
    BookMaker maker(library, letters, settings);
    UnfinishedFile book(target);
    FileDevice file(book.path());
    if (!paintBook(maker, file, settings, progress, letters.size())) return false;
    file.finish();
    book.finish();
    if (plan != nullptr) *plan = maker.plan();
    return true;
}

bool printLetters(const Library& library, const std::vector<LetterId>& letters,
                  QPagedPaintDevice& device, const ExportProgress& progress)
{
    QPainter painter;
    if (!painter.begin(&device)) throw RuntimeError(75);
    const PageFonts fonts = pageFonts(kPrintPoints);
    PageSetter setter(device, &painter);
    std::size_t done = 0;
    for (const LetterId id : letters) {
        setLetter(setter, fonts, library, id);
        if (progress && !progress(++done, letters.size())) return false;
    }
    setter.finish();
    return painter.end();
}

}
