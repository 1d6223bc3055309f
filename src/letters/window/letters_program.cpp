#include "letters/window/letters_program.h"

#include "letters/command_line.h"
#include "letters/window/letters_window.h"
#include "letters/window/scheme.h"
#include "platform/system/process.h"

#include <QApplication>
#include <QPainter>
#include <QStandardPaths>

#include <system_error>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

const std::string kPersonOption = "--person";

// An envelope under a lens.
QIcon lettersIcon()
{
    QPixmap picture(64, 64);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(0x2f6fb5), 4));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(4, 12, 48, 34), 4, 4);
    painter.drawPolyline(QPolygonF({{6, 15}, {28, 32}, {50, 15}}));
    painter.setPen(QPen(QColor(0xb8560f), 5));
    painter.setBrush(QColor(255, 255, 255, 120));
    painter.drawEllipse(QPointF(42, 42), 13, 13);
    painter.drawLine(QPointF(52, 52), QPointF(60, 60));
    return picture;
}

// A path that doesn't exist is shown as a file that can't be read.
std::vector<ArchiveFile> chosenArchives(const std::string& path)
{
    try {
        return archivesAt(path);
    } catch (const std::system_error&) {
        return {{path, ArchiveKind::Chosen}};
    }
}

LettersStart startOf(const std::vector<std::string>& arguments, const std::filesystem::path& folder)
{
    LettersStart start;
    start.folder = folder;
    for (std::size_t n = 0; n < arguments.size(); ++n) {
        if (arguments[n] == kPersonOption) {
            if (n + 1 < arguments.size()) start.person = fromUtf8(arguments[++n]);
            continue;
        }
        for (const ArchiveFile& file : chosenArchives(arguments[n]))
            start.files.push_back(file);
    }
    start.settingsFile = windowSettingsFile();
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    start.desk.cacheFolder = std::filesystem::path((cache + u"/Tolvek/letters"_s).toStdU16String());
    return start;
}

}

bool wantsWindow(const std::vector<std::string>& arguments)
{
    return (!arguments.empty() && arguments.front() == kPersonOption) ||
           !wantsCommandLine(arguments);
}

int runLettersWindow(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"TolvekLetters"_s);
    QApplication::setWindowIcon(lettersIcon());
    prepareSchemes();
    LettersWindow window(startOf(arguments, programFolder(argv[0])));
    window.show();
    return QApplication::exec();
}

}
