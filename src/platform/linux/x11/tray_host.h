#pragma once

#include "linux/event_loop/paced_work.h"
#include "linux/x11/menu_bar.h"
#include "linux/x11/tray_icon.h"

#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace velmo::x11 {

/// The host of the X11 system tray: programs hand it windows that show their icons.
class TrayHost {
public:
    explicit TrayHost(MenuBar& bar);
    ~TrayHost();
    TrayHost(const TrayHost&) = delete;
    TrayHost& operator=(const TrayHost&) = delete;

    /// Becomes the display's tray and calls the programs that wait for one. False where another program
    /// is the tray.
    bool acquire();

private:
    void open();
    void close();
    void publishAppearance() const;
    void handle(const xcb_generic_event_t& event);
    void selectionChanged(const xcb_generic_event_t& event);
    void requestDocking(xcb_window_t client);
    void dockSome();
    void dock(const TrayIconFacts& facts);
    void readSome();
    using Asked = std::vector<std::pair<TrayIcon*, TrayIconNews>>;
    void askSome(TrayIconNews::Kind kind, Asked& asked);
    std::deque<xcb_window_t>& unread(TrayIconNews::Kind kind) {
        return kind == TrayIconNews::Kind::embedding ? unreadEmbeddings_ : unreadTitles_;
    }

    MenuBar& bar_;
    Connection& connection_;
    /// None while another program is the tray.
    xcb_window_t window_ = XCB_WINDOW_NONE;
    std::vector<std::unique_ptr<TrayIcon>> icons_;
    /// Windows that are to be docked.
    std::deque<xcb_window_t> waiting_;
    /// Icons of which there is news. Whether they are to be shown does not wait for what they are called.
    std::deque<xcb_window_t> unreadEmbeddings_;
    std::deque<xcb_window_t> unreadTitles_;
    PacedWork docking_;
    PacedWork reading_;
    PostedOnce removeEnded_;
    Registration appearanceChanges_;
    Registration events_;
    /// Tells also of the end of a program that is the tray in our place.
    Registration selectionEvents_;
};

}  // namespace velmo::x11
