// Long work in a thread of its own, with progress and a cancel.
//
// The work may use only what never changes, such as a Library. Its failure becomes a
// text; nothing is thrown into the window's thread. The destructor cancels and waits.
#pragma once
#include "letters/export.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <thread>

namespace tolvek {

class Job : public QObject {
    Q_OBJECT
public:
    // Returns false when it was cancelled.
    using Work = std::function<bool(const ExportProgress&)>;

    explicit Job(Work work, QObject* parent = nullptr);
    ~Job() override;

    void start();
    void cancel() { cancelled_ = true; }

signals:
    void progressed(qulonglong done, qulonglong all); // a few times a second
    // complete: neither cancelled nor failed. failure: empty unless it failed.
    void ended(bool complete, const QString& failure);

private:
    void run();
    void end(bool complete, const QString& failure);

    Work work_;
    std::atomic<bool> cancelled_ = false;
    std::thread thread_;
};

}
