#pragma once

#include "class_of.h"

namespace velmo::macos {

/// What is autoreleased meanwhile is released with it. Needed on other threads and wherever the system's
/// event loop does not run. Pools end in the reverse order of their making.
class AutoreleasePool {
public:
    AutoreleasePool();
    ~AutoreleasePool();
    AutoreleasePool(const AutoreleasePool&) = delete;
    AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
    Id pool_;
};

}  // namespace velmo::macos
