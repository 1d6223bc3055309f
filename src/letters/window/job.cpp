#include "letters/window/job.h"

#include "platform/forms/qt_text.h"
#include "platform/runtime/runtime_error.h"

#include <QElapsedTimer>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kMillisecondsBetweenReports = 60;

}

Job::Job(Work work, QObject* parent) : QObject(parent), work_(std::move(work)) {}

Job::~Job()
{
    cancelled_ = true;
    if (thread_.joinable()) thread_.join();
}

void Job::start()
{
    thread_ = std::thread([this] { run(); });
}

void Job::run()
{
    QElapsedTimer sinceReport;
    sinceReport.start();
    const auto progress = [&](std::size_t done, std::size_t all) {
        if (done == all || sinceReport.elapsed() >= kMillisecondsBetweenReports) {
            sinceReport.restart();
            QMetaObject::invokeMethod(
                this, [=, this] { emit progressed(done, all); }, Qt::QueuedConnection);
        }
        return !cancelled_;
    };
    try {
        end(work_(progress), {});
    } catch (const RuntimeError& error) {
        end(false, toQt(error.description()) + u"（"_s + QString::number(error.number()) + u"）"_s);
    } catch (const std::system_error& failure) {
        end(false, toQt(fileError(failure.code()).description()));
    } catch (const std::exception& failure) {
        end(false, QString::fromUtf8(failure.what()));
    }
}

void Job::end(bool complete, const QString& failure)
{
    QMetaObject::invokeMethod(
        this, [=, this] { emit ended(complete, failure); }, Qt::QueuedConnection);
}

}
