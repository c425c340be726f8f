#pragma once

#include "geometry.h"
#include "view.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmo {

/// Bits of a window's style. The numbers are the same on every system.
namespace window_style {
inline constexpr std::uint64_t titled = 1 << 0;
inline constexpr std::uint64_t closable = 1 << 1;
inline constexpr std::uint64_t miniaturizable = 1 << 2;
}  // namespace window_style

/// An ordinary window, as large as its content. Hidden at first; destroying it closes it.
class Window {
public:
    virtual ~Window() = default;

    /// Replaces the description of what the window shows.
    virtual void setContent(const View& content) = 0;
    virtual void setTitle(const std::string& title) = 0;
    /// Bits of `window_style`.
    virtual void setStyleMask(std::uint64_t mask) = 0;
    /// False: closing hides the window, and it can be shown again.
    virtual void setReleasedWhenClosed(bool released) = 0;
    /// Puts the window in the middle of the main screen.
    virtual void center() = 0;
    /// The system remembers the window's place under this name. A remembered place is taken at once.
    virtual void setFrameAutosaveName(const std::string& name) = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual bool isVisible() const = 0;
    /// Called after the window was closed by the user.
    virtual void setOnClose(std::function<void()> handler) = 0;
};

}  // namespace velmo
