#pragma once

#include "linux/drawing/appearance.h"
#include "linux/event_loop/paced_work.h"
#include "linux/listeners.h"
#include "linux/x11/connection.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace velmo::x11 {

/// A setting that the desktop's settings manager publishes: a number, a text, or a colour, which is of
/// no use here and read as a number.
using XSetting = std::variant<std::int32_t, std::string>;

/// Reads the content of an XSETTINGS property. What follows a malformed entry is left out.
std::map<std::string, XSetting> parseXSettings(const std::vector<std::uint8_t>& content);

/// Pixels a point, light or dark, font and accent colour, as the settings manager, or else the resource
/// database `resources` (lines of "name: value"), has them. Scales are multiples of a quarter from 1 to 4.
Appearance appearanceFrom(const std::map<std::string, XSetting>& settings, const std::string& resources);

/// The desktop's settings as they are now.
class DesktopSettings {
public:
    explicit DesktopSettings(Connection& connection);

    const Appearance& appearance() const { return appearance_; }
    /// What the user prefers whatever the theme is called; absent for no preference.
    void setPrefersDark(std::optional<bool> prefersDark);
    /// Called after the appearance has changed.
    Registration onChange(std::function<void()> listener) { return listeners_.add(std::move(listener)); }

private:
    void followManager();
    void read();

    Connection& connection_;
    Appearance appearance_;
    std::optional<bool> prefersDark_;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    Listeners listeners_;
    PacedWork reading_;
    /// Anybody can say that there is a new one.
    PacedWork following_;
    Registration rootEvents_;
    Registration managerEvents_;
};

}  // namespace velmo::x11
