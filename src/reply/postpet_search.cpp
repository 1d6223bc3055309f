#include "reply/postpet_search.h"

#include "app/program_end.h"
#include "app/settings.h"
#include "app/state.h"
#include "platform/forms/form.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/runtime_error.h"
#include "platform/system/process.h"
#include "platform/system/process_list.h"

#include <string_view>
#include <system_error>

namespace tolvek {

namespace {

constexpr TextView kProgram = u"PostPet20.exe";

Text configuredProgram()
{
    return joinPath(gPostPetDir, kProgram);
}

// The canonical form of a path, in lower case: without links, dots and double
// separators.
Text realName(const Path& path)
{
    std::error_code failure;
    const Path target = std::filesystem::weakly_canonical(path, failure);
    return lowerCase(pathText(failure ? path : target));
}

// The two names under which the configured PostPet may appear in the process list. The
// path as configured is what an emulated program's command line shows. The system
// itself reports the file behind all links, spelt as on disk. If PostPet is configured
// through a link, a dotted path or in different case, the first form alone would never
// find it running.
class Wanted {
public:
    Wanted()
        : configured_(lowerCase(configuredProgram())),
          target_(realName(existingPath(configuredProgram())))
    {
    }

    bool matches(TextView name) const
    {
        if (inStr(lowerCase(name), lowerCase(kProgram), Compare::TextMode) == 0) return false;
        return lowerCase(name) == configured_ || realName(nativePath(name)) == target_;
    }

private:
    Text configured_;
    Text target_;
};

class Snapshot {
public:
    Snapshot() : handle_(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0)) {}
    ~Snapshot()
    {
        if (handle_ != kNoSnapshot) CloseHandle(handle_);
    }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    bool first(PROCESSENTRY32& entry) const
    {
        return handle_ != kNoSnapshot && Process32First(handle_, entry);
    }
    bool next(PROCESSENTRY32& entry) const { return Process32Next(handle_, entry); }

private:
    SnapshotHandle handle_;
};

Text fileName(const PROCESSENTRY32& entry)
{
    return cutAtNul(fromUtf8(std::string_view(entry.szExeFile, sizeof entry.szExeFile)));
}

// The system gives no process list. Without it, keys might be typed into any copy of
// PostPet, so the program ends.
void reportAndEnd(Form& caller)
{
    MsgBox(u"ﾌﾟﾛｾｽｴﾝﾄﾘの取得に失敗しました");
    caller.Unload();
    endProgram();
}

}

void findPostPet(Form& caller)
{
    gPostPetPid = 0;
    const Snapshot snapshot;
    PROCESSENTRY32 entry;
    entry.dwSize = kProcessEntrySize;
    if (!snapshot.first(entry)) reportAndEnd(caller);
    const Wanted postPet;
    do { // kept: the last match counts, so the search never stops early
        if (postPet.matches(fileName(entry)))
            gPostPetPid = static_cast<std::int32_t>(entry.th32ProcessID);
    } while (snapshot.next(entry));
}

void startPostPet()
{
    gPostPetPid = asFileError([] { return startProgram(existingPath(configuredProgram())); });
}

}
