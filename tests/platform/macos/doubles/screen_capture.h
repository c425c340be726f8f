#pragma once

#include <cstdint>

namespace velmo::macos::doubles {

struct RequestedCapture {
    std::uint32_t window = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;
    bool showsCursor = false;
    std::int64_t resolution = 0;
    std::uint32_t pixelFormat = 0;

    bool operator==(const RequestedCapture&) const = default;
};

/// Classes that answer as those of screen capture do: on another thread.
void addScreenCapture();

}  // namespace velmo::macos::doubles
