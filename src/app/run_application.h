#pragma once

#include "platform/platform.h"

namespace velmo {

/// Runs the program on a system. Returns once the application has ended.
void runApplication(const Platform& platform);

}  // namespace velmo
