#pragma once

#include <cstdlib>

namespace velmo::fuzz {

/// What has to be true whatever was read: the fuzzer ends where it is not, and keeps the input.
inline void require(bool condition) {
    if (!condition)
        std::abort();
}

}  // namespace velmo::fuzz
