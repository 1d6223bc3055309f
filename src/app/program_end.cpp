#include "app/program_end.h"

#include "platform/dao/dao.h"
#include "platform/runtime/text_files.h"
#include "platform/system/process.h"

#include <cstdio>
#include <exception>

namespace tolvek {

namespace {

std::function<void(int)> endHook;

// The program ends whatever happens here; only the error stream is left to
// hear of a failure.
template <class Step> void lastStep(const char* name, Step step)
{
    try {
        step();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", name, failure.what());
    }
}

}

void endProgram(int code)
{
    lastStep("DBEngine::Abandon", [] { DBEngine::Abandon(); });
    lastStep("closeAllFiles", [] { closeAllFiles(); });
    if (endHook) endHook(code);
    leaveProcess(code);
}

void setEndHook(std::function<void(int)> hook)
{
    endHook = std::move(hook);
}

}
