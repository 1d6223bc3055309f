// Run by the build: packs the manual's files into the help file.
//
//     tolvek_pack_help OUTPUT FILE...
#include "help/help_pack.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

bool taken(tolvek::HelpItems& items, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    items.insert(QFileInfo(path).fileName(), file.readAll());
    return true;
}

bool written(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

int failed(const char* what, const char* path)
{
    std::fprintf(stderr, "tolvek_pack_help: can't %s %s\n", what, path);
    return 1;
}

}

int main(int argc, char** argv)
{
    if (argc < 3) return failed("do without", "OUTPUT FILE...");
    tolvek::HelpItems items;
    for (int i = 2; i < argc; ++i)
        if (!taken(items, QString::fromLocal8Bit(argv[i]))) return failed("read", argv[i]);
    if (!written(QString::fromLocal8Bit(argv[1]), tolvek::packedHelp(items)))
        return failed("write", argv[1]);
    return 0;
}
