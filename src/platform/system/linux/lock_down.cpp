#include "platform/system/lock_down.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <seccomp.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tolvek {

namespace {

class Filter {
public:
    // Calls that aren't listed fail with EPERM and don't kill the process, so a
    // library that tries an unnecessary call can continue.
    Filter() : context_(seccomp_init(SCMP_ACT_ERRNO(EPERM)), seccomp_release) {}

    template <class... Conditions> void allow(int call, const Conditions&... conditions)
    {
        whole_ = whole_ && context_ &&
                 seccomp_rule_add(context_.get(), SCMP_ACT_ALLOW, call, sizeof...(conditions),
                                  conditions...) == 0;
    }
    // Memory that isn't executable.
    void allowWithoutCode(int call) { allow(call, SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)); }
    bool load() const { return whole_ && seccomp_load(context_.get()) == 0; }

private:
    std::unique_ptr<void, void (*)(scmp_filter_ctx)> context_;
    bool whole_ = true;
};

}

bool lockDown()
{
    Filter filter;
    for (const int call : {SCMP_SYS(read),           SCMP_SYS(write),
                           SCMP_SYS(lseek),          SCMP_SYS(_llseek),
                           SCMP_SYS(fstat),          SCMP_SYS(fstat64),
                           SCMP_SYS(close),          SCMP_SYS(brk),
                           SCMP_SYS(munmap),         SCMP_SYS(mremap),
                           SCMP_SYS(madvise),        SCMP_SYS(futex),
                           SCMP_SYS(getrandom),      SCMP_SYS(clock_gettime),
                           SCMP_SYS(sched_yield),    SCMP_SYS(rt_sigaction),
                           SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn),
                           SCMP_SYS(sigreturn),      SCMP_SYS(sigaltstack),
                           SCMP_SYS(getpid),         SCMP_SYS(gettid),
                           SCMP_SYS(exit),           SCMP_SYS(exit_group)})
        filter.allow(call);
    for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mmap2), SCMP_SYS(mprotect)})
        filter.allowWithoutCode(call);
    // abort() sends a signal; only to this process.
    filter.allow(SCMP_SYS(tgkill), SCMP_A0(SCMP_CMP_EQ, static_cast<scmp_datum_t>(getpid())));
    // Newer C libraries use this call to query an open file.
    filter.allow(SCMP_SYS(newfstatat), SCMP_A3(SCMP_CMP_EQ, AT_EMPTY_PATH));
#if defined(__SANITIZE_ADDRESS__)
    // The sanitizer writes to a pipe of its own to find out whether an address is
    // readable.
    filter.allow(SCMP_SYS(pipe2));
#endif
    return filter.load();
}

}
