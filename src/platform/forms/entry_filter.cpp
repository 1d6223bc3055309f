#include "platform/forms/entry_filter.h"
#include "platform/forms/qt_text.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/entered_text.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

namespace tolvek {

namespace {

QString entered(const QString& text)
{
    return toQt(enteredLine(fromQt(text)));
}

// The character before the text of an input method. A voicing mark at the start of
// that text may combine with it.
QString characterBefore(const QLineEdit& edit)
{
    const int at = edit.hasSelectedText() ? edit.selectionStart() : edit.cursorPosition();
    const QString before = edit.text().left(at).right(1);
    return fitsAnsi(fromQt(before)) ? before : QString();
}

}

EntryFilter::EntryFilter(QLineEdit& edit) : QObject(&edit), edit_(edit)
{
    edit.installEventFilter(this);
    connect(&edit, &QLineEdit::textChanged, this, &EntryFilter::hold);
}

void EntryFilter::setByCode(const QString& text)
{
    const QScopedValueRollback byCode(byCode_, true);
    edit_.setText(text);
}

// Pastes and input methods are handled before the box has the text: with a later
// correction a paste couldn't be undone and an input method would lose its
// composition. Events also arrive while the box is being destroyed, when its
// members can't be called.
bool EntryFilter::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::InputMethod)
        return !edit_.isReadOnly() && commit(*static_cast<QInputMethodEvent*>(event));
    const bool pastes = event->type() == QEvent::KeyPress && !edit_.isReadOnly() &&
                        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste);
    if (pastes) paste();
    return pastes;
}

void EntryFilter::paste()
{
    edit_.insert(entered(QGuiApplication::clipboard()->text()));
}

bool EntryFilter::commit(const QInputMethodEvent& event)
{
    // A replacement counts from its own position; hold() corrects that text
    // afterwards.
    if (event.commitString().isEmpty() || event.replacementLength() != 0) return false;
    const QString before = characterBefore(edit_);
    const QString both = entered(before + event.commitString());
    if (both == before + event.commitString()) return false;
    QInputMethodEvent held(event.preeditString(), event.attributes());
    if (both.startsWith(before))
        held.setCommitString(both.mid(before.size()));
    else
        // The mark has combined with the character before it, so that one is
        // replaced.
        held.setCommitString(both, -1, 1);
    QCoreApplication::sendEvent(&edit_, &held);
    return true;
}

// Handles all other sources after the box has the text. What came in ends at the
// caret: a line end in it doesn't remove the text after the caret.
void EntryFilter::hold()
{
    if (byCode_) return;
    const QString text = edit_.text();
    const int at = edit_.cursorPosition();
    const QString before = entered(text.left(at));
    const QString held = entered(before + entered(text.mid(at)));
    if (held == text) return;
    edit_.setText(held);
    edit_.setCursorPosition(static_cast<int>(before.size()));
}

}
