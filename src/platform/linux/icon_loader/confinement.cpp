#include "confinement.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
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

/// In the root: other processes and their memory, terminals and devices. No picture lies there but in
/// /dev/shm.
constexpr std::array kernelFolders = {"dev", "proc", "sys"};
/// What Landlock rules over: to open files and folders for reading, as all else is refused anyway.
constexpr std::uint64_t reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;

bool isKernelFolder(const std::filesystem::path& folder) {
    return std::find(kernelFolders.begin(), kernelFolders.end(), folder.filename()) != kernelFolders.end();
}

/// A file, or what lies below a folder, wherever that is mounted from. Where that cannot be allowed it stays
/// refused. To open a path like that mounts nothing that mounts itself.
void allowReading(int rules, const std::filesystem::path& path, std::uint64_t access) {
    const int descriptor = open(path.c_str(), O_PATH | O_CLOEXEC);
    if (descriptor < 0)
        return;
    const landlock_path_beneath_attr rule = {access, descriptor};
    syscall(SYS_landlock_add_rule, rules, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    close(descriptor);
}

/// Rules can allow what lies below a folder, not refuse it: all else in the root is allowed.
bool allowAllButKernelFolders(int rules) {
    std::error_code end;
    std::filesystem::directory_iterator entry("/", end);
    for (; !end && entry != std::filesystem::directory_iterator(); entry.increment(end)) {
        std::error_code unknown;
        // What a link leads to lies elsewhere in the root.
        if (entry->is_symlink(unknown) || isKernelFolder(entry->path()))
            continue;
        if (entry->is_directory(unknown))
            allowReading(rules, entry->path(), reading);
        else if (entry->is_regular_file(unknown))
            allowReading(rules, entry->path(), LANDLOCK_ACCESS_FS_READ_FILE);
    }
    // Memory, where programs may keep files.
    allowReading(rules, "/dev/shm", reading);
    return !end && syscall(SYS_landlock_restrict_self, rules, 0) == 0;
}

/// For this thread, and those that it starts. True where the kernel knows no such rules, too.
bool closeKernelFolders() {
    const landlock_ruleset_attr ruled = {.handled_access_fs = reading};
    const auto rules = static_cast<int>(syscall(SYS_landlock_create_ruleset, &ruled, sizeof ruled, 0));
    if (rules < 0)
        return errno == ENOSYS || errno == EOPNOTSUPP;
    const bool areClosed = allowAllButKernelFolders(rules);
    close(rules);
    return areClosed;
}

}  // namespace

bool confineProcess() {
    // The kernel takes rules and filters from nobody who could start a program that may do more.
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !closeKernelFolders())
        return false;
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
