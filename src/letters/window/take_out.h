// Runs the export, the book and the print with a progress window.
#pragma once
#include "letters/window/job.h"
#include "letters/window/take_out_dialog.h"

#include <QPointer>

class QProgressDialog;

namespace tolvek {

class TakeOutRun : public QObject {
    Q_OBJECT
public:
    explicit TakeOutRun(QWidget& window);

    bool isRunning() const { return !job_.isNull(); }
    // letters: newest first, as the list shows them; they are taken out oldest first.
    void takeOut(std::shared_ptr<const Library> library, std::vector<LetterId> letters,
                 const TakeOut& choice);
    void print(std::shared_ptr<const Library> library, std::vector<LetterId> letters);
    void cancel(); // and waits

signals:
    // words: for the status bar. complete: the file is there.
    void ended(bool complete, const QString& words);

private:
    void start(const QString& title, const QString& done, Job::Work work);
    void finish(bool complete, const QString& failure, const QString& done);

    QWidget& window_;
    QPointer<Job> job_; // a child: it goes with this object, if not before
    QPointer<QProgressDialog> progress_;
};

}
