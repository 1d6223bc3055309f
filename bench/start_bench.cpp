// Measures what a start does with an archive of N mails (30,000 by default): the check
// and the compaction, compared with a plain copy of the file that is flushed to disk.
//
//     tolvek_start_bench [N]
#include "bench/big_archive.h"
#include "platform/runtime/paths.h"
#include "platform/system/files.h"
#include "store/db_compress.h"
#include "store/table_create.h"
#include "support/temp_folder.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

using namespace tolvek;
using Clock = std::chrono::steady_clock;

constexpr int kRounds = 5;

double seconds(const std::function<void()>& work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// The best of several rounds: other load on the machine only adds time.
double measure(const std::function<void()>& work)
{
    double best = seconds(work);
    for (int round = 1; round < kRounds; ++round)
        best = std::min(best, seconds(work));
    return best;
}

}

int main(int argc, char** argv)
{
    const test::TempFolder home;
    setAppPath(pathText(home.path()));
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    Table_Create();
    bench::storeMails(argc > 1 ? std::atoi(argv[1]) : 30000);
    const auto archive = home.path() / "Tolvek.Mdb", copy = home.path() / "copy";
    const double copied = measure([&] {
        copyFileContents(archive, copy, false);
        flushFolder(home.path());
    });
    const double compacted = measure([] { dbCompress(gDbPath); });
    std::printf("archive                     %8.1f MB\n",
                static_cast<double>(std::filesystem::file_size(archive)) / 1e6);
    std::printf("plain copy, on the disk     %8.3f s\n", copied);
    std::printf("check, compaction, rotation %8.3f s, %.1f copies\n", compacted,
                compacted / copied);
    return 0;
}
