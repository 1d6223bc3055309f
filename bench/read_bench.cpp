// Reads one box of N generated mails like the read command (30,000 by default), then
// lists and browses them. Prints seconds, mails per second, the ratio of each step to
// the read, and the peak memory of the process.
//
//     tolvek_read_bench [N]
#include "app/converter_library.h"
#include "app/database.h"
#include "app/settings.h"
#include "app/state.h"
#include "browse/navigator.h"
#include "browse/subject_list.h"
#include "demo/big_box.h"
#include "import/mail_box_read.h"
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"
#include "store/search_tables.h"
#include "store/table_create.h"
#include "support/temp_folder.h"
#include "window/frm_tolvek.h"

#include <QApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace tolvek;

struct Step {
    std::string name;
    double seconds;
};

std::vector<Step> steps;

double timed(const std::string& name, const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    steps.push_back({name, taken.count()});
    return taken.count();
}

long peakMemoryMB()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::atol(line.c_str() + 6) / 1024;
    return 0;
}

void layOut(const Path& home, int mails)
{
    std::filesystem::copy_file(CONVERTER_LIBRARY, home / Path(CONVERTER_LIBRARY).filename());
    setAppPath(pathText(home));
    gDbPath = joinPath(appPath(), u"Tolvek.Mdb");
    gPostPetDir = joinPath(appPath(), u"PostPet");
    gMyMailAddr = u"hana@example.jp";
    gMyMailHandle = u"はな";
    gRecievMailReadOption[0] = 1;
    const Path box =
        nativePath(joinPath(joinPath(gPostPetDir, kReceiveFolder), kReceiveMainBox.mail));
    std::filesystem::create_directories(box.parent_path());
    sample::makeBigBox(box, mails);
    fillMailBoxTable();
    fillMonthNames();
}

void readAll()
{
    const DBEngine::Session session;
    timed("read (convert and store)", [] { MailBoxRead(); });
    timed("names", [] { edSearch_Name(); });
    timed("addresses", [] { edSearch_Addr(); });
}

void convertAlone()
{
    timed("convert alone", [] {
        const Text folder = joinPath(gPostPetDir, kReceiveFolder);
        Int16 count, status;
        converterLibrary().Tolvek_Edit(joinPath(folder, kReceiveMainBox.list),
                                       joinPath(folder, kReceiveMainBox.mail),
                                       joinPath(appPath(), u"Other.Tmp"), count, status);
    });
}

void browseAll(frmTolvek& form)
{
    timed("list addresses", [&] { dspSearch_Addr(form); });
    timed("list dates", [&] { dspSearch_Date(form); });
    timed("all mails of the user", [&] { dspSubject(form, gMyMailAddr); });
    timed("one mail", [&] {
        form.lstSubject->setListIndex(form.lstSubject->ListCount() / 2);
        lstSubject_Click(form);
    });
}

void print(int mails)
{
    const double read = steps.front().seconds;
    std::printf("%-28s %9s %12s\n", "step", "seconds", "of the read");
    for (const Step& step : steps)
        std::printf("%-28s %9.3f %11.1f%%\n", step.name.c_str(), step.seconds,
                    100 * step.seconds / read);
    std::printf("%d mails, %.0f mails a second, most memory %ld MB\n", mails, mails / read,
                peakMemoryMB());
}

}

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const int mails = argc > 1 ? std::atoi(argv[1]) : 30000;
    const test::TempFolder home;
    layOut(home.path(), mails);
    Table_Create();
    frmTolvek form;
    form.Show();
    readAll();
    timed("read again (nothing new)", [] {
        const DBEngine::Session session;
        MailBoxRead();
    });
    convertAlone();
    browseAll(form);
    print(mails);
    return 0;
}
