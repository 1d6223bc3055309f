// The process: the set-up that the program's own entry relies on, then the event loop.
#include "app/guard.h"
#include "app/program_end.h"
#include "dialogs/frm_splash.h"
#include "dialogs/pictures.h"
#include "help/frm_help.h"
#include "platform/dao/alone.h"
#include "platform/forms/events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"
#include "shell/frm_tolvek_events.h"
#include "shell/tolvek_main.h"
#include "shell/win_help.h"
#include "store/archive_tables.h"
#include "store/database_files.h"

#include <QApplication>

int main(int argc, char** argv)
{
    using namespace tolvek;
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvek"));
    QApplication::setWindowIcon(programIcon());
    prepareApplication();
    // While a box waits for the user, the database is at rest, so a kill then loses
    // nothing.
    setBeforeWait(putAllAtRest);
    registerArchiveTables();
    setEndFunction([] { endProgram(); });

    const std::filesystem::path home = programFolder(argv[0]);
    setAppPath(pathText(home));
    // Its locks go with the process, however it ends, so a kill leaves none behind.
    const SingleInstance instance("Tolvek", home, existingPath(liveDatabasePath()));
    App.PrevInstance = instance.isFirst() ? 0 : -1;
    frmHelp help;
    setHelpViewer(viewerIn(help));
    const HelpKey helpKey(application);
    frmSplash splash;
    frmTolvekEvents window;
    Main(splash, window);
    if (Forms::Count() == 0) endProgram(); // no window is left that the user could close
    return runApplication();
}
