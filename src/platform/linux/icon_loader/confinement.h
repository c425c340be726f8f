#pragma once

namespace velmo {

/// From now on the process and its threads can read files, use memory and write to what is open already, and
/// nothing else: they can reach nobody, start nothing and change no file. False where that fails; then
/// everything is as before.
[[nodiscard]] bool confineProcess();

/// False where the kernel knows no such filters, so that `confineProcess` can but fail.
bool processCanBeConfined();

}  // namespace velmo
