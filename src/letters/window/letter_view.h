// One letter with its hits marked. Plain text: nothing of a letter is interpreted, and
// even the longest one is laid out only where it is seen.
#pragma once
#include "letters/desk.h"

#include <QPlainTextEdit>

namespace tolvek {

class LetterView : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit LetterView(QWidget* parent = nullptr);

    void showLetter(const std::shared_ptr<const Library>& library, LetterId id,
                    const LetterQuery& query);
    void showNothing(const QString& why);

    // False if there is no further hit in this letter.
    bool nextHit();
    bool previousHit();
    // For a letter that is reached by F3: its first or last hit.
    void firstHit();
    void lastHit();
    int hitCount() const { return static_cast<int>(hits_.size()); }

signals:
    void zoomed(int steps); // Ctrl and the wheel

protected:
    void wheelEvent(QWheelEvent*) override;
    void changeEvent(QEvent*) override;

private:
    void addHeading(const QString& label, const QString& value, const LetterQuery& query,
                    TermField field, bool bold = false);
    void addHits(int start, const std::vector<Span>& hits);
    QTextCursor cursorOf(int hit) const;
    bool goTo(int hit);
    void mark();

    std::shared_ptr<const Library> library_; // of the letter shown; null if there is none
    LetterId id_ = 0;
    LetterQuery query_;
    std::vector<Span> hits_; // in the document: a cursor would grow with what is inserted
    int current_ = -1;
};

}
