#include "app/program_end.h"

#include "app/test_hooks.h"
#include "platform/dao/dao.h"
#include "platform/runtime/text_files.h"
#include "platform/system/process.h"

#include <cstdio>
#include <exception>

namespace tolvek {

namespace {

std::function<void(int)> endHook;

// The program ends whatever happens here, so a failure can only go to the error stream.
template <class Step> void lastStep(const char* name, Step step)
{
    try {
        step();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", name, failure.what());
    }
}

}

// The database comes first: it is the one thing that must be rolled back and closed
// before the process goes.
void endProgram(int code)
{
    lastStep("DBEngine::Abandon", [] { DBEngine::Abandon(); });
    lastStep("closeAllFiles", [] { closeAllFiles(); });
    if (endHook) endHook(code);
    leaveProcess(code);
}

void hooks::setEnd(std::function<void(int)> hook)
{
    endHook = std::move(hook);
}

}
