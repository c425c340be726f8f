#pragma once

namespace velmo {

/// From now on the process can read files, use memory and write to what is open already, and nothing else: it
/// can reach nobody, start nothing and change no file. Where the kernel has Landlock, it cannot open what
/// lies in /dev, /proc and /sys either, but for /dev/shm. To be called while the process has one thread, for
/// it and those to come. False where that fails.
[[nodiscard]] bool confineProcess();

/// False where the kernel knows no such filters, so that `confineProcess` can but fail.
bool processCanBeConfined();

}  // namespace velmo
