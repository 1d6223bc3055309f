#include "letters/window/letter_view.h"

#include "letters/window/colours.h"
#include "letters/window/letter_texts.h"
#include "platform/forms/qt_text.h"

#include <QWheelEvent>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

// More marks would make the view slow, and nobody reads them one by one.
constexpr std::size_t kMostHits = 2000;

QString filesText(const Library& library, LetterId id)
{
    QStringList names;
    for (const int file : library.filesOf(id))
        names.push_back(toQt(library.sources().at(std::size_t(file)).status.file.name()));
    return names.join(u"、"_s);
}

}

LetterView::LetterView(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    // The keyboard too, so that a letter can be read and selected without a mouse.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAccessibleName(u"手紙"_s);
    document()->setDocumentMargin(8);
}

void LetterView::addHits(int start, const std::vector<Span>& hits)
{
    for (const Span& hit : hits)
        if (hits_.size() < kMostHits)
            hits_.push_back({static_cast<std::size_t>(start) + hit.begin, hit.length});
}

void LetterView::addHeading(const QString& label, const QString& value, const LetterQuery& query,
                            TermField field, bool bold)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    QTextCharFormat labelFormat, valueFormat;
    labelFormat.setForeground(coloursFor(palette()).faint);
    valueFormat.setForeground(palette().color(QPalette::Text));
    valueFormat.setFontWeight(bold ? QFont::Bold : QFont::Normal);
    end.insertText(label + u"\t"_s, labelFormat);
    const int start = end.position();
    end.insertText(value, valueFormat);
    addHits(start, hitsIn(fromQt(value), query, field));
    end.insertText(u"\n"_s, valueFormat);
}

void LetterView::showLetter(const std::shared_ptr<const Library>& library, LetterId id,
                            const LetterQuery& query)
{
    library_ = library;
    id_ = id;
    query_ = query;
    const Letter letter = library->letter(id);
    setUpdatesEnabled(false);
    setTabStopDistance(fontMetrics().horizontalAdvance(u"ファイル　"_s));
    hits_.clear();
    current_ = -1;
    document()->clear();
    addHeading(u"件名"_s, subjectText(letter), query, TermField::Anywhere, true);
    addHeading(u"日付"_s, longDate(letter), {}, TermField::Anywhere);
    addHeading(u"差出人"_s, senderText(letter), query, TermField::From);
    addHeading(u"宛先"_s, receiverText(letter), query, TermField::To);
    addHeading(u"ファイル"_s, filesText(*library, id), {}, TermField::Anywhere);
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(u"\n"_s, QTextCharFormat());
    const QString text = paintedText(letter.text);
    const int start = end.position();
    end.insertText(text, QTextCharFormat());
    addHits(start, hitsIn(fromQt(text), query));
    mark();
    moveCursor(QTextCursor::Start);
    setUpdatesEnabled(true);
}

void LetterView::showNothing(const QString& why)
{
    library_.reset();
    hits_.clear();
    current_ = -1;
    setExtraSelections({});
    setPlainText(why);
}

QTextCursor LetterView::cursorOf(int hit) const
{
    const Span& place = hits_[static_cast<std::size_t>(hit)];
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(place.begin));
    cursor.setPosition(static_cast<int>(place.begin + place.length), QTextCursor::KeepAnchor);
    return cursor;
}

bool LetterView::goTo(int hit)
{
    if (hit < 0 || hit >= hitCount()) return false;
    current_ = hit;
    QTextCursor place = cursorOf(hit);
    place.setPosition(place.selectionStart());
    setTextCursor(place); // scrolls there; a screen reader follows the caret
    ensureCursorVisible();
    mark();
    return true;
}

bool LetterView::nextHit()
{
    return goTo(current_ + 1);
}

bool LetterView::previousHit()
{
    return goTo(current_ - 1);
}

void LetterView::firstHit()
{
    goTo(0);
}

void LetterView::lastHit()
{
    goTo(hitCount() - 1);
}

void LetterView::mark()
{
    const LetterColours colours = coloursFor(palette());
    QList<QTextEdit::ExtraSelection> marks;
    for (int hit = 0; hit < hitCount(); ++hit) {
        QTextEdit::ExtraSelection selection;
        selection.cursor = cursorOf(hit);
        selection.format.setBackground(hit == current_ ? colours.current : colours.mark);
        selection.format.setForeground(hit == current_ ? colours.currentText : colours.markText);
        marks.push_back(selection);
    }
    setExtraSelections(marks);
}

void LetterView::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) return QPlainTextEdit::wheelEvent(event);
    const int turn = event->angleDelta().y();
    if (turn != 0) emit zoomed(turn > 0 ? 1 : -1);
    event->accept();
}

// The colours and stops of headings and marks are part of the text.
void LetterView::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    const bool isLook =
        event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
    if (!isLook || !library_) return;
    const std::shared_ptr<const Library> library = library_;
    const LetterQuery query = query_;
    showLetter(library, id_, query);
}

}
