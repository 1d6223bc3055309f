#include "letters/window/job.h"

#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <optional>
#include <system_error>

namespace tolvek::test {
namespace {

struct End {
    bool complete;
    std::string failure;
};

class JobTest : public ::testing::Test {
protected:
    End endOf(Job& job)
    {
        std::optional<End> end;
        QObject::connect(&job, &Job::ended, [&](bool complete, const QString& failure) {
            end = End{complete, failure.toStdString()};
        });
        job.start();
        while (!end)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return *end;
    }
};

TEST_F(JobTest, ReportsItsProgressAndItsEnd)
{
    Job job([](const ExportProgress& progress) { return progress(1, 2) && progress(2, 2); });
    std::vector<qulonglong> done;
    QObject::connect(&job, &Job::progressed,
                     [&](qulonglong now, qulonglong) { done.push_back(now); });
    EXPECT_TRUE(endOf(job).complete);
    ASSERT_FALSE(done.empty());
    EXPECT_EQ(done.back(), 2u) << "the last step is always reported";
}

TEST_F(JobTest, ACancelEndsItAtTheNextStep)
{
    Job* running = nullptr;
    int steps = 0;
    Job job([&](const ExportProgress& progress) {
        for (std::size_t n = 0; n < 100; ++n) {
            ++steps;
            if (n == 3) running->cancel();
            if (!progress(n, 100)) return false;
        }
        return true;
    });
    running = &job;
    const End end = endOf(job);
    EXPECT_FALSE(end.complete);
    EXPECT_EQ(end.failure, "");
    EXPECT_EQ(steps, 4);
}

TEST_F(JobTest, AFailureBecomesItsText)
{
    Job full([](const ExportProgress&) -> bool { throw RuntimeError(61); });
    EXPECT_NE(endOf(full).failure.find("61"), std::string::npos);
    Job denied([](const ExportProgress&) -> bool {
        throw std::system_error(std::make_error_code(std::errc::permission_denied));
    });
    EXPECT_FALSE(endOf(denied).failure.empty());
}

TEST_F(JobTest, IsCancelledByItsDestructor)
{
    bool ended = false;
    {
        Job job([&](const ExportProgress& progress) {
            while (progress(0, 1))
                std::this_thread::yield();
            ended = true;
            return false;
        });
        job.start();
    }
    EXPECT_TRUE(ended);
}

}
}
