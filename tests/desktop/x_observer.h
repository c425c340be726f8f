#pragma once

#include <sys/types.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmo::desktop {

/// Pixels of the root window.
struct Area {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int midX() const { return x + width / 2; }
    int midY() const { return y + height / 2; }
    bool operator==(const Area&) const = default;
};

/// Looks at the windows of a display as a bystander does.
class XObserver {
public:
    explicit XObserver(const std::string& display);
    ~XObserver();
    XObserver(const XObserver&) = delete;
    XObserver& operator=(const XObserver&) = delete;

    xcb_connection_t* raw() const { return connection_; }
    xcb_window_t root() const { return root_; }
    xcb_window_t parent(xcb_window_t window) const;
    std::vector<xcb_window_t> children(xcb_window_t window) const;
    std::string property(xcb_window_t window, const std::string& name) const;
    std::vector<std::uint32_t> cardinals(xcb_window_t window, const std::string& name) const;
    /// The first window, from the top down the tree, with this title.
    std::optional<xcb_window_t> windowTitled(const std::string& title) const;
    /// The first window below `ancestor` with this class.
    std::optional<xcb_window_t> windowOfClass(xcb_window_t ancestor, const std::string& name) const;
    std::optional<Area> area(xcb_window_t window) const;
    /// The topmost of its mapped children at that pixel of the window. XCB_WINDOW_NONE where there is none.
    xcb_window_t childAt(xcb_window_t window, int x, int y) const;
    /// The child of the root window that is seen at that place. None where there is none.
    xcb_window_t topAt(int x, int y) const;
    /// True where it and all its ancestors are mapped.
    bool isViewable(xcb_window_t window) const;
    bool exists(xcb_window_t window) const;
    /// 0xRRGGBB as the screen shows it.
    std::uint32_t pixel(int x, int y) const;
    /// The same for all of an area that lies on the screen, row by row.
    std::vector<std::uint32_t> pixels(const Area& area) const;
    /// Modifiers and locks that are down or on, as bits of the core protocol.
    std::uint16_t modifierState() const;
    /// Where the pointer is on the root window.
    std::pair<int, int> pointer() const;
    /// The child of the root window that the pointer is on.
    xcb_window_t windowUnderPointer() const;
    /// Buttons of the mouse that are down, as bits of the core protocol.
    std::uint16_t buttonState() const;
    /// Which window has the keyboard.
    xcb_window_t inputFocus() const;
    /// The window that has the input focus.
    xcb_window_t keyboardOwner() const;
    xcb_window_t selectionOwner(const std::string& name) const;
    xcb_atom_t atom(const std::string& name) const;
    /// What the server holds for a process, over all of its connections: how many of each kind, such as
    /// "WINDOW".
    std::map<std::string, std::uint32_t> resources(pid_t process) const;

private:
    /// By any number of theirs.
    std::vector<std::uint32_t> clientsOf(pid_t process) const;
    std::optional<xcb_query_pointer_reply_t> queryPointer() const;

    xcb_connection_t* connection_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
};

}  // namespace velmo::desktop
