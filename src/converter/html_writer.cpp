#include "converter/html_writer.h"

#include "converter/ascii.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr int kMostQuotes = 20; // marks shown; hostile pages nest deeper

bool isEastern(char16_t unit)
{
    // From CJK radicals on, without Hangul, which has blanks between words, and
    // surrogates.
    return unit >= 0x2E80 && !(unit >= 0xAC00 && unit <= 0xDFFF);
}

}

void HtmlWriter::text(TextView text)
{
    for (const char16_t unit : text) {
        const bool space = isAsciiSpace(unit) || unit == u'\f';
        if (kept_ > 0 && unit == u'\n')
            newLine();
        else if (kept_ > 0 && unit != u'\r')
            put(unit);
        else if (space)
            blank_ = true, lineEnd_ = lineEnd_ || unit == u'\n';
        else
            put(unit);
    }
}

void HtmlWriter::put(char16_t unit)
{
    if (lineEmpty_) beginLine();
    if (blank_) putBlank(unit);
    out_ += unit;
    lineEmpty_ = false;
}

void HtmlWriter::putBlank(char16_t next)
{
    const bool inside = !lineEmpty_ && out_.back() != u' ';
    // A line end in the source of Japanese text is no blank; one between words is.
    const bool japanese = lineEnd_ && inside && isEastern(out_.back()) && isEastern(next);
    if (inside && !japanese) out_ += u' ';
    blank_ = false;
    lineEnd_ = false;
}

void HtmlWriter::beginLine()
{
    if (gap_ && begun_) out_ += u'\n';
    gap_ = false;
    begun_ = true;
    if (quotes_ > 0)
        out_.append(static_cast<std::size_t>(std::min(quotes_, kMostQuotes)), u'>') += u' ';
}

void HtmlWriter::newLine()
{
    if (lineEmpty_) beginLine();
    out_ += u'\n';
    lineEmpty_ = true;
    blank_ = false;
    lineEnd_ = false;
}

void HtmlWriter::line()
{
    if (!lineEmpty_) newLine();
    blank_ = false;
}

void HtmlWriter::paragraph()
{
    line();
    gap_ = true;
}

void HtmlWriter::rule()
{
    line();
    text(u"----------------------------------------");
    line();
}

void HtmlWriter::item(TextView mark)
{
    for (const char16_t unit : mark)
        put(unit);
    blank_ = false;
}

void HtmlWriter::nextCell()
{
    // The first cell of a row needs no gap.
    if (lineEmpty_) return;
    out_ += out_.ends_with(u' ') ? u" " : u"  ";
    blank_ = false;
}

void HtmlWriter::quote(int step)
{
    quotes_ += step;
}

void HtmlWriter::keepBlanks(int step)
{
    kept_ += step;
}

TextView HtmlWriter::since(std::size_t begin) const
{
    return TextView(out_).substr(std::min(begin, out_.size()));
}

Text HtmlWriter::takeLines()
{
    // The unfinished line stays, as more text may follow on it.
    const std::size_t end = out_.rfind(u'\n') + 1; // npos + 1 is none
    Text lines = out_.substr(0, end);
    out_.erase(0, end);
    return lines;
}

Text HtmlWriter::finish()
{
    line();
    return std::move(out_);
}

}
