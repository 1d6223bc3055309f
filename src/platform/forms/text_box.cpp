#include "platform/forms/text_box.h"
#include "platform/forms/entry_filter.h"
#include "platform/runtime/entered_text.h"

#include <QMimeData>
#include <QTextBlock>

#include <algorithm>

namespace tolvek {

namespace {

// The classic platform's boxes hold 64 K; Qt's own limit is half of that.
constexpr int kMaxLength = 65535;

bool isBreak(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

// The end of the break that begins at `at`.
std::size_t behindBreak(TextView text, std::size_t at)
{
    const bool pair = at + 1 < text.size() && isBreak(text[at + 1]) && text[at + 1] != text[at];
    return at + (pair ? 2 : 1);
}

// The position in the exact text for a position in the painted one.
std::size_t exactPosition(TextView text, int painted)
{
    std::size_t at = 0;
    for (; painted > 0 && at < text.size(); --painted)
        at = isBreak(text[at]) ? behindBreak(text, at) : at + 1;
    return at;
}

// True if the text ends in a single CR or LF, which another unit could complete.
// Pairs are formed from the left, so all breaks at the end are walked through.
bool endsInOpenBreak(TextView text)
{
    std::size_t at = text.size();
    while (at > 0 && isBreak(text[at - 1]))
        --at;
    std::size_t last = 0;
    while (at < text.size()) {
        const std::size_t next = behindBreak(text, at);
        last = next - at;
        at = next;
    }
    return last == 1;
}

}

TextBox::TextBox(Container container, TextView name)
    : ControlOf(container, name), entries_(new EntryFilter(*this))
{
    setMaxLength(kMaxLength);
    connect(this, &QLineEdit::textChanged, this, &TextBox::Change);
}

void TextBox::setText(TextView text)
{
    entries_->setByCode(toQt(text));
}

MultiLineTextBox::MultiLineTextBox(Container container, TextView name) : ControlOf(container, name)
{
    setUndoRedoEnabled(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, &MultiLineTextBox::takeUserEdit);
}

void MultiLineTextBox::setText(TextView text)
{
    const bool adds = !openBreak_ && !text_.empty() && text.size() >= text_.size() &&
                      text.substr(0, text_.size()) == text_;
    const TextView rest = adds ? text.substr(text_.size()) : text;
    // textChanged fires for changes by code too, which takeUserEdit must ignore.
    settingText_ = true;
    if (!adds) clear();
    append(rest);
    settingText_ = false;
    text_ = adds ? text_ + tolvek::Text(rest) : tolvek::Text(text);
    openBreak_ = endsInOpenBreak(text_);
    emit Change();
}

// Moves the caret to the start, as the classic platform does whenever code sets a
// text.
void MultiLineTextBox::append(TextView rest)
{
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(paintedText(rest));
    setTextCursor(QTextCursor(document()));
}

void MultiLineTextBox::takeUserEdit()
{
    if (settingText_) return;
    const tolvek::Text typed = fromQt(toPlainText());
    const tolvek::Text entered = enteredLines(typed);
    tolvek::Text exact;
    // Line ends in the user's text become CR LF.
    for (const char16_t unit : entered)
        exact += unit == u'\n' ? kCrLf : TextView(&unit, 1);
    text_.clear(); // it no longer matches what is painted, so nothing may be appended to it
    if (entered != typed) return setText(exact);
    text_ = exact;
    openBreak_ = false;
    emit Change();
}

tolvek::Text MultiLineTextBox::SelText() const
{
    const QTextCursor cursor = textCursor();
    const std::size_t from = exactPosition(text_, cursor.selectionStart());
    const std::size_t to = exactPosition(text_, cursor.selectionEnd());
    return text_.substr(from, to - from);
}

QMimeData* MultiLineTextBox::createMimeDataFromSelection() const
{
    auto* exact = new QMimeData;
    exact->setText(toQt(SelText()));
    return exact;
}

}
