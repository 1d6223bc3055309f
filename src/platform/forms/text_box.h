// Text boxes with one line and with several lines.
//
// User input is restricted to visible characters that code page 932 holds
// (runtime/entered_text.h); a single-line box takes the first line of a pasted
// text. A text set by code stays unchanged.
#pragma once
#include "platform/forms/control.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace tolvek {

class EntryFilter;

class TextBox : public ControlOf<QLineEdit> {
    Q_OBJECT
public:
    TextBox(Container container, TextView name);
    tolvek::Text Text() const { return fromQt(text()); }
    void setText(TextView text);

signals:
    void Change(); // by the user or by code

private:
    EntryFilter* entries_;
};

// Keeps the exact text beside the widget and copies to the clipboard from it: CR
// LF, LF CR, CR and LF are all painted as one break, so the widget can't return
// them. If Text is set to its present value with an addition, only the addition is
// inserted.
class MultiLineTextBox : public ControlOf<QPlainTextEdit> {
    Q_OBJECT
public:
    MultiLineTextBox(Container container, TextView name);
    const tolvek::Text& Text() const { return text_; }
    void setText(TextView text);
    bool Locked() const { return isReadOnly(); }
    void setLocked(bool locked) { setReadOnly(locked); } // still selectable and focusable
    tolvek::Text SelText() const;                        // the exact text of the selection

signals:
    void Change();

protected:
    QMimeData* createMimeDataFromSelection() const override;

private:
    void append(TextView rest);
    void takeUserEdit();

    tolvek::Text text_;
    bool openBreak_ = false; // the text ends in a break that one more unit could complete
    bool settingText_ = false;
};

}
