// Text boxes, of one line and of several.
//
// What the user enters is held to what code page 932 has and what can be seen
// (runtime/entered_text.h); of a pasted text a box of one line takes the first
// line. A text set by code stays as it is.
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

// Keeps the exact text beside the widget, and the clipboard takes its part of
// that: CR LF, LF CR, CR and LF are all painted as one break, so the widget
// alone couldn't give them back. Setting Text to Text and something more only
// adds the rest.
class MultiLineTextBox : public ControlOf<QPlainTextEdit> {
    Q_OBJECT
public:
    MultiLineTextBox(Container container, TextView name);
    const tolvek::Text& Text() const { return text_; }
    void setText(TextView text);
    bool Locked() const { return isReadOnly(); }
    void setLocked(bool locked) { setReadOnly(locked); } // still selectable, takes the focus
    tolvek::Text SelText() const;                        // the exact text of the selection

signals:
    void Change();

protected:
    QMimeData* createMimeDataFromSelection() const override;

private:
    void append(TextView rest);
    void takeUserEdit();

    tolvek::Text text_;
    bool openBreak_ = false; // the text ends in a break that one more unit could join
    bool settingText_ = false;
};

}
