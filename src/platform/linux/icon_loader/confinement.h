#pragma once

namespace velmo {

/// From now on the process and its threads can read files, use memory and write to what is open already, and
/// nothing else: they can reach nobody, start nothing and change no file. False where the kernel knows no
/// such filters; then everything is as before.
bool confineProcess();

}  // namespace velmo
