// tolvek_count_archive FILE [WANTED]: prints how many mails, addresses and names an
// archive holds. With WANTED it fails when there are fewer mails, or when the archive
// isn't at rest (there is a journal beside it, or a program holds it).
#include "platform/dao/dao.h"
#include "platform/runtime/paths.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace tolvek;

template <std::size_t N> int rowsOf(Database& archive, const char16_t (&sql)[N])
{
    Recordset rows = archive.OpenRecordset(Statement{sql});
    if (rows.Eof()) return 0;
    rows.MoveLast();
    return rows.RecordCount();
}

bool atRest(const std::filesystem::path& archive)
{
    for (const char* journal : {"-wal", "-shm", "-journal"})
        if (std::filesystem::exists(archive.string() + journal)) return false;
    return true;
}

int count(const std::filesystem::path& path, int wanted)
{
    Database archive = DBEngine::OpenDatabase(pathText(path));
    const int mails = rowsOf(archive, u"SELECT tblTolvek_YMD FROM tblTolvek");
    std::printf("mails %d, addresses %d, names %d\n", mails,
                rowsOf(archive, u"SELECT tblSearch_Addr_Data FROM tblSearch_Addresses"),
                rowsOf(archive, u"SELECT tblSearch_Name_Data FROM tblSearch_Name"));
    archive.Close();
    return mails >= wanted ? 0 : 1;
}

}

int main(int argc, char** argv)
{
    if (argc < 2) return 2;
    const std::filesystem::path path = argv[1];
    const int wanted = argc > 2 ? std::atoi(argv[2]) : 0;
    if (argc > 2 && !atRest(path)) return 1;
    try {
        return count(path, wanted);
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
