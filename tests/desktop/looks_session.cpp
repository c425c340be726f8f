#include "looks_session.h"

#include "icon_pixels.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <thread>

namespace velmo::desktop {

namespace {

bool isInIconsMiddle(int column, int row) {
    const auto within = [](int place) {
        return place >= TrayClient::margin && place < TrayClient::side - TrayClient::margin;
    };
    return within(column) && within(row);
}

/// The background, wherever that fills most.
std::uint32_t mostFrequent(const std::vector<std::uint32_t>& pixels) {
    std::map<std::uint32_t, int> counts;
    for (const auto pixel : pixels)
        ++counts[pixel];
    return std::max_element(counts.begin(), counts.end(),
                            [](const auto& one, const auto& other) { return one.second < other.second; })
        ->first;
}

}  // namespace

std::uint32_t LooksSession::expectedPixel(Look look, std::uint32_t color, int column, int row,
                                          std::uint32_t background, int side) {
    const bool isInIcon = column >= 0 && row >= 0 && column < side && row < side;
    const bool isSmall = look == Look::parentRelative || look == Look::shaped;
    if (!isInIcon || (isSmall && !isInIconsMiddle(column, row)))
        return background;
    if (look != Look::translucent)
        return color;
    const auto half = [&](int shift) { return ((color >> shift & 0xff) * 0x80 / 255) << shift; };
    return over(0x80U << 24 | half(16) | half(8) | half(0), background);
}

bool LooksSession::isNear(std::uint32_t one, std::uint32_t other, int tolerance) {
    for (const int shift : {0, 8, 16}) {
        if (std::abs(static_cast<int>(one >> shift & 0xff) - static_cast<int>(other >> shift & 0xff)) >
            tolerance)
            return false;
    }
    return true;
}

void LooksSession::start(const std::string& screen, const std::string& clickAction) {
    startServer(screen);
    writeDefaults({{"autoRehide", false},
                   {"hideOnClickOutside", false},
                   {"clickAction", clickAction},
                   {"statusItemOrder",
                    {"Velmo.Toggle", "shown.Icon", "Velmo.Divider", "icon0.Icon", "icon1.Icon", "icon2.Icon",
                     "icon3.Icon"}}});
}

void LooksSession::TearDown() {
    client_.reset();
    PanelWindowSession::TearDown();
}

void LooksSession::startIcons() {
    // Nothing of what lies behind the panel has a colour of interest.
    if (readDefaults()["clickAction"] == "showPanel")
        makeWindow({0, 0, 1280, 700}, 0x485058);
    startVelmo();
    client_ = std::make_unique<TrayClient>(environment_.at("DISPLAY"));
    for (std::size_t index = 0; index < looks.size(); ++index) {
        icons_[index] = client_->makeIcon("icon" + std::to_string(index), looks[index], firstColors[index]);
        client_->dock(icons_[index]);
    }
    shown_ = client_->makeIcon("shown", Look::opaque, 0x808080);
    client_->dock(shown_);
    for (const auto icon : icons_)
        ASSERT_TRUE(eventually([&] { return isHidden(icon); }));
    ASSERT_TRUE(eventually([&] { return isOnScreen(shown_); }));
    // What follows a docking has come to its end.
    ASSERT_TRUE(comesToRest());
}

void LooksSession::paintAll(const Colors& colors) {
    for (std::size_t index = 0; index < icons_.size(); ++index)
        client_->setColor(icons_[index], colors[index]);
}

void LooksSession::toggleTo(bool isRevealed) {
    click(toggle());
    ASSERT_TRUE(eventually([&] {
        return std::all_of(icons_.begin(), icons_.end(),
                           [&](auto icon) { return isRevealed ? isOnScreen(icon) : isHidden(icon); });
    }));
}

std::string LooksSession::faultOf(std::size_t index, std::uint32_t color, std::uint32_t background,
                                  int tolerance) const {
    const auto place = *x().area(icons_[index]);
    const Area slot = {place.x - 4, place.y - 2, place.width + 8, place.height + 4};
    const auto pixels = x().pixels(slot);
    for (int row = 0; row < slot.height; ++row) {
        for (int column = 0; column < slot.width; ++column) {
            const auto seen = pixels[static_cast<std::size_t>(row * slot.width + column)];
            const auto wanted =
                expectedPixel(looks[index], color, column - 4, row - 2, background, place.width);
            if (!isNear(seen, wanted, tolerance)) {
                std::ostringstream text;
                text << "icon " << index << " at " << column - 4 << ' ' << row - 2 << ": " << std::hex << seen
                     << ", not " << wanted;
                return text.str();
            }
        }
    }
    return {};
}

void LooksSession::expectSeen(const Colors& colors, std::uint32_t background, int tolerance) {
    for (std::size_t index = 0; index < icons_.size(); ++index) {
        EXPECT_TRUE(eventually([&] { return faultOf(index, colors[index], background, tolerance).empty(); },
                               milliseconds(3000)))
            << faultOf(index, colors[index], background, tolerance);
    }
}

void LooksSession::expectSeenInPanel() {
    for (const auto& colors : {firstColors, otherColors}) {
        paintAll(colors);
        // Pictures that were taken before are old by then.
        std::this_thread::sleep_for(milliseconds(2500));
        openPanelWindow();
        const long side = x().area(icons_.front())->width;
        constexpr long square =
            (TrayClient::side - 2 * TrayClient::margin) * (TrayClient::side - 2 * TrayClient::margin);
        EXPECT_TRUE(eventually([&] { return countInPanel(colors[0]) == side * side; }))
            << countInPanel(colors[0]);
        EXPECT_TRUE(eventually([&] { return countInPanel(colors[1]) == square; })) << countInPanel(colors[1]);
        EXPECT_TRUE(eventually([&] { return countInPanel(colors[3]) == square; })) << countInPanel(colors[3]);
        EXPECT_TRUE(eventually([&] { return countTranslucentInPanel(colors[2]) == side * side; }))
            << countTranslucentInPanel(colors[2]);
        EXPECT_EQ(countInPanel(colors[2]), 0) << "it is half transparent";
        for (const auto color : colors == firstColors ? otherColors : firstColors)
            EXPECT_EQ(countInPanel(color), 0);
        EXPECT_EQ(countInPanel(0), 0);
        xdotool({"key", "Escape"});
        ASSERT_TRUE(eventually([&] { return !panel(); }));
    }
}

std::vector<std::uint32_t> LooksSession::panelPixels() const {
    auto area = panel().value_or(Area{0, 0, 1, 1});
    // Its shadow goes beyond the screen.
    area.width = std::min(area.width, 1280 - area.x);
    return x().pixels(area);
}

long LooksSession::countInPanel(std::uint32_t color) const {
    const auto pixels = panelPixels();
    return std::count(pixels.begin(), pixels.end(), color);
}

long LooksSession::countTranslucentInPanel(std::uint32_t color) const {
    const auto pixels = panelPixels();
    const auto wanted = expectedPixel(Look::translucent, color, 0, 0, mostFrequent(pixels));
    return std::count_if(pixels.begin(), pixels.end(), [&](auto pixel) { return isNear(pixel, wanted, 1); });
}

}  // namespace velmo::desktop
