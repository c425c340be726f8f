#pragma once

#include "x_observer.h"

namespace velmo::desktop {

/// A window that shows whether a window manager has begun its work. One that takes what has been there before
/// would take windows that others have put elsewhere meanwhile.
class ProbeWindow {
public:
    explicit ProbeWindow(const XObserver& x) : x_(x), window_(xcb_generate_id(x.raw())) {
        xcb_create_window(x.raw(), XCB_COPY_FROM_PARENT, window_, x.root(), 300, 300, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    ~ProbeWindow() { xcb_destroy_window(x_.raw(), window_); }
    ProbeWindow(const ProbeWindow&) = delete;
    ProbeWindow& operator=(const ProbeWindow&) = delete;

    /// Each time it asks to be shown: one that has only just begun may lose a request.
    bool isManaged() const {
        xcb_map_window(x_.raw(), window_);
        return !x_.cardinals(window_, "WM_STATE").empty();
    }
    /// It stays a moment longer than the window.
    xcb_window_t frame() const { return x_.parent(window_); }

private:
    const XObserver& x_;
    xcb_window_t window_;
};

}  // namespace velmo::desktop
