#pragma once

#include "platform/geometry.h"
#include "settings/settings_tab.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmo {

/// What the program asked of others during a step, in order, as text.
class Account {
public:
    struct Entry {
        std::string_view title;
        std::string_view keyEquivalent;
    };

    /// An entry without a title stands for a separator.
    void menuOpened(std::string_view itemName, const Point& location, const std::vector<Entry>& entries);
    void settingsRequested(std::optional<SettingsTab> tab, std::size_t accessRequests);
    void quit() { text_ += "quit; "; }
    void handlerInstalled() { text_ += "handler installed; "; }
    void handlerRemoved() { text_ += "handler removed; "; }
    void hotKeyRegistered(std::uint32_t id) { text_ += "registers " + std::to_string(id) + "; "; }
    void hotKeyReleased(std::uint32_t id) { text_ += "releases " + std::to_string(id) + "; "; }
    void pressAnswered(std::int32_t status) { text_ += "answers " + std::to_string(status) + "; "; }

    /// The text so far, which then begins anew.
    std::string take();

private:
    std::string text_;
};

}  // namespace velmo
