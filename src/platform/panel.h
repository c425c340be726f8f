#pragma once

#include "event.h"
#include "geometry.h"
#include "view.h"

#include <cstdint>
#include <functional>
#include <string_view>

namespace velmo {

/// How a panel is made. The numbers are the same on every system.
struct PanelConfiguration {
    /// Bits of `panel_style`.
    std::uint64_t styleMask = 0;
    /// One of `window_layer`.
    std::int64_t level = 0;
    /// Bits of `collection_behavior`.
    std::uint64_t collectionBehavior = 0;
    bool isFloating = false;
    bool hidesOnDeactivate = true;
    bool hasShadow = true;
    /// One of `animation_behavior`.
    std::int64_t animationBehavior = 0;
    /// Of the background, behind which other windows are seen: one of `panel_material`,
    /// `blending_mode` and `material_state`.
    std::int64_t material = 0;
    std::int64_t blendingMode = 0;
    std::int64_t materialState = 0;
    /// Points; the content is cut off at the corners.
    double cornerRadius = 0;
    /// What assistive programs call the panel.
    std::string_view accessibilityLabel;

    bool operator==(const PanelConfiguration&) const = default;
};

namespace panel_style {
inline constexpr std::uint64_t borderless = 0;
inline constexpr std::uint64_t nonactivatingPanel = 1 << 7;
inline constexpr std::uint64_t fullSizeContentView = 1 << 15;
}  // namespace panel_style

namespace collection_behavior {
inline constexpr std::uint64_t canJoinAllSpaces = 1 << 0;
inline constexpr std::uint64_t transient = 1 << 3;
inline constexpr std::uint64_t fullScreenAuxiliary = 1 << 8;
}  // namespace collection_behavior

namespace animation_behavior {
inline constexpr std::int64_t utilityWindow = 4;
}  // namespace animation_behavior

namespace panel_material {
inline constexpr std::int64_t menu = 5;
}  // namespace panel_material

namespace blending_mode {
inline constexpr std::int64_t behindWindow = 0;
}  // namespace blending_mode

namespace material_state {
inline constexpr std::int64_t active = 1;
}  // namespace material_state

/// A window that floats above others and takes no keyboard focus. Hidden at first; destroying it closes it.
class Panel {
public:
    virtual ~Panel() = default;

    /// Replaces the description of what the panel shows.
    virtual void setContent(const View& content) = 0;
    /// The extent that the content wants, in points.
    virtual Size fittingSize() const = 0;
    /// Points, origin at the bottom left of the primary screen.
    virtual void setFrame(const Rect& frame) = 0;
    /// Shows the panel above others, whether or not the application is active.
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
    virtual bool isVisible() const = 0;
    /// Called after the system has closed the panel by itself, as it may when it needs the place.
    virtual void setOnClose(std::function<void()> handler) = 0;
    /// By which events name the panel.
    virtual WindowNumber windowNumber() const = 0;
};

}  // namespace velmo
