#pragma once

#include <sys/types.h>

#include <map>
#include <string>

namespace velmo::desktop {

/// Proportional memory (PSS) of a process and of all that it has started, in kilobytes.
long memoryOf(pid_t process);

/// The same of what a process shares with others while it runs, e.g. with the X server: its part of it.
long sharedMemoryOf(pid_t process);

/// The process's own.
long threadsOf(pid_t process);

/// How many processes it has started, and these have, that are still there.
long childrenOf(pid_t process);

/// Milliseconds for which processors have worked for a process and all that it has started, over all of their
/// threads.
double workOf(pid_t process);

/// True where its main thread waits for something. One that is due and has no processor yet does not.
bool isAsleep(pid_t process);

/// How often a process and all that it has started go to sleep, over all of their threads: as often as
/// something wakes them. What takes a thread's turn away is not counted.
class SleepCounter {
public:
    /// Counts from now on: all threads, or those of a name.
    explicit SleepCounter(pid_t process, std::string thread = {});
    long count() const;

private:
    std::map<pid_t, long> sleepsByThread() const;

    pid_t process_;
    std::string thread_;
    std::map<pid_t, long> before_;
};

}  // namespace velmo::desktop
