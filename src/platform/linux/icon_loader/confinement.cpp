#include "confinement.h"

#include <fcntl.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>

#include <array>
#include <cerrno>
#include <memory>

namespace velmo {

namespace {

/// What decoders and the libraries below them ask of the system, whatever the arguments.
constexpr auto allowed = std::to_array<int>({
    // Memory.
    SCMP_SYS(brk),
    SCMP_SYS(mmap),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(mprotect),
    SCMP_SYS(madvise),
    // Files that are open.
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(pread64),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(lseek),
    SCMP_SYS(close),
    SCMP_SYS(fstat),
    SCMP_SYS(fstatfs),
    SCMP_SYS(getdents64),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    // What lies in folders.
    SCMP_SYS(stat),
    SCMP_SYS(lstat),
    SCMP_SYS(newfstatat),
    SCMP_SYS(statx),
    SCMP_SYS(statfs),
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(getcwd),
    // Threads, which scale large pictures, and what the toolkit wakes them by.
    SCMP_SYS(eventfd2),
    SCMP_SYS(futex),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(rseq),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(gettid),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    // Time, chance, and who we are.
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(getrandom),
    SCMP_SYS(getpid),
    SCMP_SYS(getuid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getegid),
    SCMP_SYS(uname),
    SCMP_SYS(sysinfo),
    // Signals that it gets.
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(restart_syscall),
});

/// Anything but reading: also a file that is opened to be read can be made empty, or be made.
constexpr scmp_datum_t changesFile = O_ACCMODE | O_CREAT | O_TRUNC;
/// With the others, descriptors send signals to any process.
constexpr std::array<scmp_datum_t, 4> harmlessFileCommands = {F_GETFD, F_SETFD, F_GETFL, F_DUPFD_CLOEXEC};

/// Of the argument at that place, from 0.
constexpr scmp_arg_cmp equal(unsigned place, scmp_datum_t value) {
    return {place, SCMP_CMP_EQ, value, 0};
}
constexpr scmp_arg_cmp masked(unsigned place, scmp_datum_t mask, scmp_datum_t value) {
    return {place, SCMP_CMP_MASKED_EQ, mask, value};
}

struct ReleaseFilter {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, ReleaseFilter>;

/// One that cannot be added, because this machine's system has no such call, allows nothing.
template <typename... Conditions>
void allow(const Filter& filter, int call, const Conditions&... conditions) {
    seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, sizeof...(conditions), conditions...);
}

}  // namespace

bool confineProcess() {
    // As an older kernel would answer, which is what libraries are prepared for.
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(ENOSYS)));
    if (!filter || seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) != 0)
        return false;
    for (const int call : allowed)
        allow(filter, call);
    allow(filter, SCMP_SYS(open), masked(1, changesFile, O_RDONLY));
    allow(filter, SCMP_SYS(openat), masked(2, changesFile, O_RDONLY));
    for (const auto command : harmlessFileCommands)
        allow(filter, SCMP_SYS(fcntl), equal(1, command));
    allow(filter, SCMP_SYS(clone), masked(0, CLONE_THREAD, CLONE_THREAD));
    // Limits of its own, and to look at them only.
    allow(filter, SCMP_SYS(prlimit64), equal(0, 0), equal(2, 0));
#ifdef __SANITIZE_ADDRESS__
    // The sanitizers write to pipes to learn where there is memory.
    allow(filter, SCMP_SYS(pipe));
    allow(filter, SCMP_SYS(pipe2));
#endif
    return seccomp_load(filter.get()) == 0;
}

bool processCanBeConfined() {
    // A filter that is none: whoever knows filters looks for it, and says that it is nowhere.
    return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, nullptr) == 0 || errno != EINVAL;
}

}  // namespace velmo
