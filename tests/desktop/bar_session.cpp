#include "bar_session.h"

#include "tray_client.h"

#include <unistd.h>

#include <cstdlib>

namespace velmo::desktop {

void BarSession::TearDown() {
    stopBar();
    DesktopSession::TearDown();
}

void BarSession::stopBar() {
    notifierTray_.reset();
    tray_.reset();
    bar_.reset();
    modifiers_.reset();
    screens_.reset();
    settings_.reset();
    connection_.reset();
}

void BarSession::startBar(const std::vector<std::string>& order) {
    setenv("DISPLAY", environment_.at("DISPLAY").c_str(), 1);
    std::string problem;
    connection_ = x11::Connection::open(loop_, problem);
    ASSERT_TRUE(connection_) << problem;
    settings_ = std::make_unique<x11::DesktopSettings>(*connection_);
    screens_ = std::make_unique<x11::ScreenList>(*connection_, *settings_);
    modifiers_ = std::make_unique<x11::Modifiers>(*connection_);
    bar_ = std::make_unique<x11::MenuBar>(
        x11::MenuBar::Environment{*connection_, *settings_, *screens_, *modifiers_, currentEvent_,
                                  localEvents_, toolkit_, text_, getpid(), globalPreferences()},
        order, [](const auto&) {});
    tray_ = std::make_unique<x11::TrayHost>(*bar_);
    ASSERT_TRUE(tray_->acquire());
}

void BarSession::startNotifierTray() {
    startSessionBus();
    setenv("DBUS_SESSION_BUS_ADDRESS", busAddress().c_str(), 1);
    notifierTray_ = std::make_unique<x11::NotifierTray>(*bar_);
    notifierTray_->start();
}

FileGlobalPreferences& BarSession::globalPreferences() {
    if (!globalPreferences_)
        globalPreferences_.emplace(home_ / "global.json");
    return *globalPreferences_;
}

bool BarSession::turnUntil(const std::function<bool()>& condition, milliseconds limit) {
    return eventually(
        [&] {
            loop_.turn();
            loop_.prepareToSleep();
            return condition();
        },
        limit);
}

xcb_window_t BarSession::makeIcon(std::uint8_t depth, const std::vector<std::uint32_t>& pixels) const {
    xcb_connection_t* raw = x().raw();
    const auto side = std::uint16_t{iconSide};
    const xcb_pixmap_t content = xcb_generate_id(raw);
    xcb_create_pixmap(raw, depth, content, x().root(), side, side);
    const xcb_gcontext_t context = xcb_generate_id(raw);
    xcb_create_gc(raw, context, content, 0, nullptr);
    xcb_put_image(raw, XCB_IMAGE_FORMAT_Z_PIXMAP, content, context, side, side, 0, 0, 0, depth,
                  static_cast<std::uint32_t>(pixels.size() * 4),
                  reinterpret_cast<const std::uint8_t*>(pixels.data()));
    xcb_free_gc(raw, context);

    const bool hasAlpha = depth == 32;
    xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
    xcb_colormap_t colormap = XCB_COPY_FROM_PARENT;
    if (hasAlpha) {
        visual = *connection_->alphaVisual();
        colormap = xcb_generate_id(raw);
        xcb_create_colormap(raw, XCB_COLORMAP_ALLOC_NONE, colormap, x().root(), visual);
    }
    const xcb_window_t window = xcb_generate_id(raw);
    const std::uint32_t values[] = {content, 0, colormap};
    xcb_create_window(raw, depth, window, x().root(), 0, 0, side, side, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      visual, XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP, values);
    xcb_free_pixmap(raw, content);
    return window;
}

void BarSession::dock(xcb_window_t window) {
    sendToTray(x(), 0, window);
    EXPECT_TRUE(turnUntil([&] { return itemOf(window) && x().isViewable(window); }));
}

xcb_window_t BarSession::coverBar() const {
    const xcb_window_t window = xcb_generate_id(x().raw());
    const std::uint32_t values[] = {0xff00ff, 1, XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE};
    xcb_create_window(x().raw(), XCB_COPY_FROM_PARENT, window, x().root(), 0, 0, 1280, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    xcb_map_window(x().raw(), window);
    // Other connections' requests come after it from now on.
    x().exists(window);
    return window;
}

Area BarSession::areaOnScreen(const x11::BarItem& item) const {
    auto shown = bar_->shownArea(item);
    shown.x += item.place()->x;
    const auto area = bar_->onRoot(shown);
    return {area.x, area.y, area.width, area.height};
}

const x11::BarItem* BarSession::itemOf(xcb_window_t window) const {
    for (const auto* item : bar_->items()) {
        const auto content = item->content();
        if (content && content->window == window)
            return item;
    }
    return nullptr;
}

}  // namespace velmo::desktop
