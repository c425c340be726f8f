#pragma once

#include "platform/process_info.h"

namespace velmo {

/// Whether the process runs in a sandbox, found out at the first call and the same ever after: a process
/// cannot leave its sandbox. May be called on any thread.
bool isSandboxed(const ProcessInfo& processInfo);

/// What the environment says now.
bool environmentTellsSandbox(const ProcessInfo& processInfo);

}  // namespace velmo
