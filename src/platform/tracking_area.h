#pragma once

#include "event.h"

#include <cstdint>

namespace velmo {

/// Options as bits; the numbers are the same on every system.
using TrackingAreaOptions = std::uint32_t;

namespace tracking {
inline constexpr TrackingAreaOptions mouseEnteredAndExited = 0x01;
inline constexpr TrackingAreaOptions activeAlways = 0x80;
inline constexpr TrackingAreaOptions inVisibleRect = 0x200;
}  // namespace tracking

/// Receives what a tracking area notices. Names follow the messages that systems send.
class TrackingAreaOwner {
public:
    virtual ~TrackingAreaOwner() = default;

    virtual void mouseEnteredWith(const Event& event) = 0;
    virtual void mouseExitedWith(const Event& event) = 0;
};

/// An area in which the pointer's coming and going is noticed; destroying it ends that.
class TrackingArea {
public:
    virtual ~TrackingArea() = default;
};

}  // namespace velmo
