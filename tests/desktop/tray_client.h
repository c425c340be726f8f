#pragma once

#include "beside.h"
#include "x_observer.h"

#include <atomic>
#include <map>
#include <mutex>
#include <random>
#include <string>

namespace velmo::desktop {

/// Sends a message as programs send it to the tray: to dock a window, the opcode is 0.
void sendToTray(const XObserver& program, std::uint32_t opcode, xcb_window_t window);

/// A program with icons in the X11 tray, with a connection of its own. Its end is that of a program that
/// dies.
class TrayClient {
public:
    enum class Look {
        /// Before a white background.
        opaque,
        /// A smaller square before the background of whatever the icon lies in.
        parentRelative,
        /// Half transparent, with an alpha channel.
        translucent,
        /// Opaque, but only a smaller square is there.
        shaped
    };
    /// Pixels of an icon's window at first, and around the square in its middle then.
    static constexpr int side = 20;
    static constexpr int margin = 5;

    explicit TrayClient(const std::string& display);
    TrayClient(const TrayClient&) = delete;
    TrayClient& operator=(const TrayClient&) = delete;

    /// The bar knows it as "`name`.Icon". It is drawn when the server asks for that, and not before.
    xcb_window_t makeIcon(const std::string& name, Look look = Look::opaque, std::uint32_t color = 0x0000ff);
    /// Draws the icon in another colour, 0xRRGGBB.
    void setColor(xcb_window_t icon, std::uint32_t color);
    void dock(xcb_window_t icon) const { sendToTray(x_, 0, icon); }
    /// From now on all icons dock whenever a tray comes, each time in another order.
    void dockWithEachTray(unsigned seed);
    void setEmbeddingFlags(xcb_window_t icon, std::uint32_t flags) const;
    void destroy(xcb_window_t icon);
    /// How often the server has asked for drawings.
    int exposures() const { return exposures_; }
    /// From now on presses on it come to the program.
    void takePresses(xcb_window_t icon) const;
    int presses() const { return presses_; }

    const XObserver& x() const { return x_; }

private:
    struct Icon {
        Look look = Look::opaque;
        std::uint32_t color = 0;
        xcb_gcontext_t context = XCB_NONE;
    };

    xcb_window_t makeWindow(Look look);
    xcb_visualid_t alphaVisual() const;
    std::uint32_t pixelOf(const Icon& icon) const;
    void setShape(xcb_window_t window) const;
    void draw(xcb_window_t window, const Icon& icon) const;
    void answer();
    void handle(const xcb_generic_event_t& event);
    void dockAll();

    XObserver x_;
    xcb_atom_t manager_;
    std::mutex mutex_;
    std::map<xcb_window_t, Icon> icons_;
    bool docksAnew_ = false;
    std::mt19937 random_;
    std::atomic<int> exposures_ = 0;
    std::atomic<int> presses_ = 0;
    Beside answers_{Beside::Times::untilTheEnd, [this] { answer(); }};
};

}  // namespace velmo::desktop
