#pragma once

#include "linux/event_loop/event_loop.h"
#include "linux/event_loop/posted_once.h"
#include "linux/registration.h"
#include "linux/x11/atoms.h"
#include "linux/x11/reply.h"

#include <xcb/xcb.h>

#include <chrono>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmo::x11 {

/// The connection to the X server: events go to whoever asked for those of a window or an extension,
/// errors of single requests are dropped (other clients' windows may vanish at any moment).
class Connection {
public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    /// Null where there is no X server, or it lacks an extension that the bar cannot do without.
    /// `problem` then says what is wrong.
    static std::unique_ptr<Connection> open(EventLoop& loop, std::string& problem);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    xcb_connection_t* raw() const { return connection_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    const Atoms& atoms() const { return *atoms_; }
    EventLoop& loop() const { return loop_; }
    /// A 32-bit visual with an alpha channel. Absent where the screen has none.
    std::optional<xcb_visualid_t> alphaVisual() const;
    /// True for a window that was made through this connection.
    bool isOurs(xcb_window_t window) const;
    xcb_window_t newId() const { return xcb_generate_id(connection_); }

    /// Events about a window; several handlers may ask for the same.
    Registration onWindow(xcb_window_t window, Handler handler);
    /// Which events of the window the server tells this connection of: those of the mask, and no others.
    void selectEvents(xcb_window_t window, std::uint32_t mask) const;
    /// Events of an extension: core-like ones from its first event on, generic ones of its major opcode.
    Registration onExtension(xcb_extension_t& extension, Handler handler);
    /// Keys or modifiers have changed.
    Registration onKeyboardChange(Handler handler);
    /// The server has gone, or has ended the connection.
    void setOnLost(std::function<void()> handler) { onLost_ = std::move(handler); }

    /// A property's value, cut off after `limit` bytes. Empty where there is none of that type.
    std::vector<std::uint8_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type,
                                       std::uint32_t limit = 65536) const;
    std::string textProperty(xcb_window_t window, xcb_atom_t name, xcb_atom_t type) const;
    void setCardinals(xcb_window_t window, xcb_atom_t property, const std::vector<std::uint32_t>& values,
                      xcb_atom_t type = XCB_ATOM_CARDINAL) const;
    void setText(xcb_window_t window, xcb_atom_t property, const std::string& text, xcb_atom_t type) const;
    /// Sends a client message with 32-bit data to whoever selected `eventMask` on the window.
    void sendMessage(xcb_window_t destination, std::uint32_t eventMask, xcb_window_t window, xcb_atom_t type,
                     const std::vector<std::uint32_t>& data) const;
    /// Waits until the server has done everything asked so far.
    void sync() const;
    /// The same, but for no longer than that: others may hold the server.
    void sync(std::chrono::milliseconds atMost) const;
    /// Does the work once all events that came before the last reply have been handed to those who wait for
    /// them.
    void afterArrivedEvents(std::function<void()> work);

private:
    struct Entry {
        Handler handler;
        bool ended = false;
    };
    using Entries = std::list<std::shared_ptr<Entry>>;
    /// An event, or work that follows those before it.
    struct Arrived {
        Owned<xcb_generic_event_t> event;
        std::function<void()> work;
    };
    struct Extension {
        std::uint8_t firstEvent = 0;
        Entries handlers;
    };

    Connection(xcb_connection_t* connection, int screenNumber, EventLoop& loop);
    void readEvents();
    void dispatch(const xcb_generic_event_t& event);
    void dispatchToExtension(const xcb_generic_event_t& event);
    /// `removed` is called after the handler has gone.
    static Registration add(Entries& entries, Handler handler, std::function<void()> removed = {});
    static void call(const Entries& entries, const xcb_generic_event_t& event);
    void noticeLoss();

    xcb_connection_t* connection_;
    const xcb_screen_t* screen_;
    EventLoop& loop_;
    std::unique_ptr<Atoms> atoms_;
    std::unordered_map<xcb_window_t, Entries> windowHandlers_;
    /// By major opcode.
    std::map<std::uint8_t, Extension> extensions_;
    Entries keyboardHandlers_;
    std::deque<Arrived> arrived_;
    std::function<void()> onLost_;
    bool lost_ = false;
    PostedOnce moreEvents_;
    Registration keyboardEvents_;
    Registration source_;
    Registration beforeSleep_;
};

}  // namespace velmo::x11
