#pragma once

#include "lifetime.h"
#include "linux/event_loop/posted_once.h"
#include "linux/x11/image_reader.h"
#include "linux/x11/item_shot.h"
#include "linux/x11/menu_bar.h"
#include "screen_capture.h"

#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Pictures of the bar's items. All that are asked for in one turn of the loop are taken together in a later
/// one, on one sheet, so that the server is waited for once.
class WindowCapture : public ScreenCapture {
public:
    explicit WindowCapture(MenuBar& bar);

    /// Tries it with a pixel of the bar: an X server may refuse.
    bool preflightAccess() const override;
    /// An X server asks nobody.
    bool requestAccess() override { return preflightAccess(); }
    void getShareableWindows(bool onScreenWindowsOnly,
                             std::function<void(std::optional<WindowNumbers>)> completion) override;
    void captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                       std::function<void(std::optional<Bitmap>)> completion) override;

private:
    struct Request {
        std::uint32_t windowNumber = 0;
        CaptureConfiguration configuration;
        std::function<void(std::optional<Bitmap>)> completion;
        /// Absent where there is nothing to picture.
        std::optional<ItemShot> shot = {};
    };

    bool picturesAreGivenAway() const;
    bool isOnScreen(const BarItem& item) const;
    WindowNumbers shareableWindows(bool onScreenOnly) const;
    std::optional<ItemShot> shotFor(const Request& request) const;
    std::vector<Request> nextRequests();
    void takePictures();

    MenuBar& bar_;
    mutable bool hasAccess_ = false;
    Connection& connection_;
    ImageReader reader_;
    std::deque<Request> requests_;
    PostedOnce pass_;
    Lifetime lifetime_;
};

}  // namespace velmo::x11
