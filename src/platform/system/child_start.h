// How a child process that works on untrusted data begins.
#pragma once

namespace tolvek {

// The process's environment becomes this one variable.
void setOnlyVariable(const char* name, const char* value);

// From now on a crash or an abort() ends the process at once, without a box or a report,
// and in such a way that its parent sees a crash and not an exit code.
void showCrashes();

}
