#pragma once

#include "image.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace velmo {

/// How one window is to be pictured.
struct CaptureConfiguration {
    /// Pixels, at least 1 each.
    std::int64_t width = 1;
    std::int64_t height = 1;
    bool showsCursor = false;

    bool operator==(const CaptureConfiguration&) const = default;
};

/// Pictures of other programs' windows, and the user's consent to them. Pictures are 32-bit with alpha, at
/// the best resolution that there is. Completions are called once each, on the main thread in a later turn of
/// the run loop, in any order.
class ScreenCapture {
public:
    using WindowNumbers = std::vector<std::uint32_t>;

    virtual ~ScreenCapture() = default;

    /// True where pictures may be taken. Asks nobody.
    virtual bool preflightAccess() const = 0;
    /// Asks for consent where it is missing, in the system's own way. True where pictures may be taken.
    virtual bool requestAccess() = 0;

    /// Gives the numbers of the windows that can be pictured. Absent where the system does not answer.
    virtual void getShareableWindows(bool onScreenWindowsOnly,
                                     std::function<void(std::optional<WindowNumbers>)> completion) = 0;
    /// Pictures one window, whatever covers it. The bitmap's size in points is left to the caller. Absent
    /// where it fails.
    virtual void captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                               std::function<void(std::optional<Bitmap>)> completion) = 0;
};

}  // namespace velmo
