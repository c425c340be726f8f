#include "linux/icon_loader/confinement.h"

#include <fcntl.h>
#include <linux/io_uring.h>
#include <linux/landlock.h>
#include <linux/perf_event.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace velmo {

namespace {

/// What somebody tries who has got the better of a decoder; each gives what the system has said.
using Attempts = std::vector<std::pair<const char*, std::function<long()>>>;

/// A process that confines itself and then tries things, and what it might do them to: a file, a folder, a
/// socket that is connected, and a process.
class Confinement : public testing::Test {
protected:
    void SetUp() override {
        std::string pattern = std::filesystem::temp_directory_path() / "velmo-confined-XXXXXX";
        folder_ = mkdtemp(pattern.data());
        file_ = (folder_ / "file").string();
        other_ = (folder_ / "other").string();
        std::ofstream(file_) << "kept";
        std::filesystem::permissions(file_, std::filesystem::perms(0640));
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, sockets_.data()), 0);
        victim_ = fork();
        if (victim_ == 0) {
            pause();
            _exit(0);
        }
        ASSERT_GT(victim_, 0);
    }

    void TearDown() override {
        if (victim_ > 0) {
            kill(victim_, SIGKILL);
            waitpid(victim_, nullptr, 0);
        }
        for (const int socket : sockets_)
            close(socket);
        std::filesystem::remove_all(folder_);
    }

    /// The word that the confined process ends with.
    static std::string confined(const std::function<std::string()>& tries) {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const pid_t process = fork();
        if (process == 0) {
            const std::string word = confineProcess() ? tries() : "not confined";
            if (write(ends[1], word.data(), word.size()) < 0)
                _exit(1);
            _exit(0);
        }
        close(ends[1]);
        std::string word(4096, '\0');
        const auto size = read(ends[0], word.data(), word.size());
        word.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        close(ends[0]);
        waitpid(process, nullptr, 0);
        return word;
    }

    /// The names of those that were not refused with that word of the system, then "end".
    static std::string notRefused(const Attempts& attempts, int refusal = ENOSYS) {
        return confined([&] {
            std::string names;
            for (const auto& [name, attempt] : attempts) {
                errno = 0;
                if (attempt() != -1 || errno != refusal)
                    names += std::string(name) + " ";
            }
            return names + "end";
        });
    }

    bool everythingIsAsBefore() const {
        std::ostringstream content;
        content << std::ifstream(file_).rdbuf();
        struct stat facts {};
        int names = 0;
        for (const auto& name : std::filesystem::directory_iterator(folder_))
            names += name.path().empty() ? 0 : 1;
        return content.str() == "kept" && stat(file_.c_str(), &facts) == 0 &&
               (facts.st_mode & 0777) == 0640 && names == 1 && waitpid(victim_, nullptr, WNOHANG) == 0;
    }

    std::filesystem::path folder_;
    std::string file_;
    std::string other_;
    std::array<int, 2> sockets_{};
    pid_t victim_ = -1;
};

TEST_F(Confinement, ReachesNobody) {
    std::array<int, 2> pair{};
    const sockaddr address = {AF_UNIX, "abc"};
    iovec part = {file_.data(), 1};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    const int socket = sockets_[0];
    EXPECT_EQ(notRefused({
                  {"socket", [&] { return ::socket(AF_UNIX, SOCK_STREAM, 0); }},
                  {"internet", [&] { return ::socket(AF_INET, SOCK_STREAM, 0); }},
                  {"socketpair", [&] { return socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()); }},
                  {"connect", [&] { return connect(socket, &address, sizeof address); }},
                  {"bind", [&] { return bind(socket, &address, sizeof address); }},
                  {"listen", [&] { return listen(socket, 1); }},
                  {"sendmsg", [&] { return sendmsg(socket, &message, 0); }},
                  {"recvmsg", [&] { return recvmsg(socket, &message, MSG_DONTWAIT); }},
                  {"shmget", [&] { return shmget(IPC_PRIVATE, 4096, IPC_CREAT | 0600); }},
                  {"ioctl", [&] { return ioctl(STDIN_FILENO, TIOCSTI, "x"); }},
                  {"rings", [&] { return syscall(SYS_io_uring_setup, 1, nullptr); }},
              }),
              "end");
}

TEST_F(Confinement, StartsNothingAndTouchesNoProcess) {
    std::array<char*, 1> none = {nullptr};
    iovec part = {file_.data(), 1};
    const rlimit limit = {0, 0};
    const int socket = sockets_[0];
    EXPECT_EQ(notRefused({
                  {"execve", [&] { return execve("/bin/true", none.data(), none.data()); }},
                  {"execveat",
                   [&] { return syscall(SYS_execveat, AT_FDCWD, "/bin/true", none.data(), none.data(), 0); }},
                  {"fork", [&] { return syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0); }},
                  {"clone3", [&] { return syscall(SYS_clone3, nullptr, 0); }},
                  {"unshare", [&] { return unshare(CLONE_NEWUSER); }},
                  {"kill", [&] { return kill(victim_, SIGTERM); }},
                  {"tgkill", [&] { return syscall(SYS_tgkill, victim_, victim_, SIGTERM); }},
                  {"sigqueue", [&] { return sigqueue(victim_, SIGTERM, {}); }},
                  {"pidfd_open", [&] { return syscall(SYS_pidfd_open, victim_, 0); }},
                  {"signals of a socket", [&] { return fcntl(socket, F_SETOWN, victim_); }},
                  {"ptrace", [&] { return ptrace(PTRACE_SEIZE, victim_, 0, 0); }},
                  {"process_vm_readv", [&] { return process_vm_readv(victim_, &part, 1, &part, 1, 0); }},
                  {"process_vm_writev", [&] { return process_vm_writev(victim_, &part, 1, &part, 1, 0); }},
                  {"limits of others", [&] { return prlimit(victim_, RLIMIT_CPU, &limit, nullptr); }},
                  {"limits", [&] { return setrlimit(RLIMIT_NOFILE, &limit); }},
                  {"setpriority", [&] { return setpriority(PRIO_PROCESS, static_cast<id_t>(victim_), 19); }},
                  {"perf_event_open", [&] { return syscall(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
                  {"bpf", [&] { return syscall(SYS_bpf, 0, nullptr, 0); }},
                  {"keys", [&] { return syscall(SYS_add_key, "user", "a", "b", 1, -4); }},
              }),
              "end");
    EXPECT_TRUE(everythingIsAsBefore());
}

TEST_F(Confinement, ChangesNoFile) {
    const char* file = file_.c_str();
    const char* other = other_.c_str();
    const std::string folder = folder_.string();
    EXPECT_EQ(notRefused({
                  {"open to write", [&] { return open(file, O_WRONLY); }},
                  {"open for both", [&] { return open(file, O_RDWR); }},
                  {"empty it", [&] { return open(file, O_RDONLY | O_TRUNC); }},
                  {"make it", [&] { return open(other, O_RDONLY | O_CREAT, 0600); }},
                  {"without a name", [&] { return open(folder.c_str(), O_TMPFILE | O_RDWR, 0600); }},
                  {"creat", [&] { return syscall(SYS_openat, AT_FDCWD, other, O_CREAT | O_WRONLY, 0600); }},
                  {"openat2", [&] { return syscall(SYS_openat2, AT_FDCWD, other, nullptr, 0); }},
                  {"truncate", [&] { return truncate(file, 0); }},
                  {"unlink", [&] { return unlink(file); }},
                  {"unlinkat", [&] { return unlinkat(AT_FDCWD, file, 0); }},
                  {"rename", [&] { return rename(file, other); }},
                  {"renameat2", [&] { return renameat2(AT_FDCWD, file, AT_FDCWD, other, 0); }},
                  {"link", [&] { return link(file, other); }},
                  {"symlink", [&] { return symlink(file, other); }},
                  {"chmod", [&] { return chmod(file, 0666); }},
                  {"fchmodat", [&] { return fchmodat(AT_FDCWD, file, 0666, 0); }},
                  {"chown", [&] { return chown(file, getuid(), getgid()); }},
                  {"mkdir", [&] { return mkdir(other, 0700); }},
                  {"rmdir", [&] { return rmdir(folder.c_str()); }},
                  {"mknod", [&] { return mknod(other, S_IFIFO | 0600, 0); }},
                  {"utimes", [&] { return utimensat(AT_FDCWD, file, nullptr, 0); }},
                  {"setxattr", [&] { return setxattr(file, "user.a", "b", 1, 0); }},
                  {"memfd_create", [&] { return memfd_create("a", 0); }},
              }),
              "end");
    EXPECT_TRUE(everythingIsAsBefore());
}

TEST_F(Confinement, OpensNeitherProcessesNorTerminalsNorDevices) {
    if (syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION) < 0)
        GTEST_SKIP() << "this kernel has no Landlock";
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    const std::string itsEnd = ptsname(terminal);
    const std::string process = "/proc/" + std::to_string(victim_);
    const auto link = folder_ / "other";
    std::filesystem::create_symlink(process + "/environ", link);
    const auto opens = [](const std::string& name) {
        return [name] { return open(name.c_str(), O_RDONLY | O_NOCTTY | O_NONBLOCK); };
    };
    const Attempts attempts = {
        {"environment", opens(process + "/environ")},
        {"memory", opens(process + "/mem")},
        {"own memory", opens("/proc/self/mem")},
        {"by a link", opens(link)},
        {"by the folder above", opens("/usr/.." + process + "/environ")},
        {"processes", opens("/proc")},
        {"terminal", opens(itsEnd)},
        {"device", opens("/dev/zero")},
        {"kernel", opens("/sys/kernel")},
    };
    for (const auto& [name, attempt] : attempts) {
        const auto descriptor = static_cast<int>(attempt());
        EXPECT_GE(descriptor, 0) << name << " can be opened by others";
        close(descriptor);
    }
    EXPECT_EQ(notRefused(attempts, EACCES), "end");
    std::string memory = "/dev/shm/velmo-XXXXXX";
    const int ownEnd = mkstemp(memory.data());
    ASSERT_GE(ownEnd, 0);
    EXPECT_EQ(notRefused({{"memory", opens(memory)}}, EACCES), "memory end");
    unlink(memory.c_str());
    close(ownEnd);
    close(terminal);
}

TEST_F(Confinement, LeavesWhatDecodersNeed) {
    EXPECT_EQ(confined([&]() -> std::string {
                  std::string content;
                  std::ifstream(file_) >> content;
                  int names = 0;
                  for (const auto& name : std::filesystem::directory_iterator(folder_))
                      names += name.is_regular_file() ? 1 : 0;
                  int done = 0;
                  std::thread([&] { done = 1; }).join();
                  return content + std::to_string(names) + std::to_string(done);
              }),
              "kept11");
}

}  // namespace

}  // namespace velmo
