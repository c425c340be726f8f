#pragma once

#include "panel_window_session.h"
#include "tray_client.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace velmo::desktop {

/// Icons of each look, hidden left of the divider, and one that is always shown.
class LooksSession : public PanelWindowSession {
protected:
    using Look = TrayClient::Look;
    using Colors = std::array<std::uint32_t, 4>;

    static constexpr std::array<Look, 4> looks = {Look::opaque, Look::parentRelative, Look::translucent,
                                                  Look::shaped};
    static constexpr Colors firstColors = {0xc01020, 0x10a020, 0x2040e0, 0xc0a010};
    static constexpr Colors otherColors = {0x10b0b0, 0xb010b0, 0xe07010, 0x305010};
    static constexpr std::uint32_t white = 0xffffff;

    void TearDown() override;

    void start(const std::string& screen, const std::string& clickAction = "revealInMenuBar");
    void startIcons();
    void paintAll(const Colors& colors);
    void toggleTo(bool isRevealed);
    /// What is seen of an icon, in pixels of its window, before that background.
    static std::uint32_t expectedPixel(Look look, std::uint32_t color, int column, int row,
                                       std::uint32_t background, int side = TrayClient::side);
    static bool isNear(std::uint32_t one, std::uint32_t other, int tolerance);
    /// Of the slot and what it shows, the first place that is not as it should be. Empty where there is none.
    std::string faultOf(std::size_t index, std::uint32_t color, std::uint32_t background,
                        int tolerance = 1) const;
    void expectSeen(const Colors& colors, std::uint32_t background, int tolerance = 1);
    /// In the panel, which has each of them once, pixel by pixel, and nothing of former times.
    void expectSeenInPanel();
    /// The bar from the left edge of the screen to the toggle.
    Area leftOfToggle() const { return {0, 0, x().area(toggle())->x, 26}; }

    std::unique_ptr<TrayClient> client_;
    std::array<xcb_window_t, 4> icons_{};
    xcb_window_t shown_ = XCB_WINDOW_NONE;

private:
    std::vector<std::uint32_t> panelPixels() const;
    long countInPanel(std::uint32_t color) const;
    long countTranslucentInPanel(std::uint32_t color) const;
};

}  // namespace velmo::desktop
