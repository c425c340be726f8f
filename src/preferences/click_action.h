#pragma once

#include <array>
#include <functional>
#include <string_view>

namespace velmo {

/// What a plain click on the toggle does.
enum class ClickAction { revealInMenuBar, showPanel };

inline constexpr std::array<ClickAction, 2> allClickActions{ClickAction::revealInMenuBar,
                                                            ClickAction::showPanel};

/// The name under which the case is stored.
std::string_view rawValue(ClickAction action);
std::string_view displayName(ClickAction action);
/// revealInMenuBar for every text that is not exactly a raw value.
ClickAction clickActionFromRawValue(std::string_view text);

}  // namespace velmo

template <>
struct std::hash<velmo::ClickAction> {
    std::size_t operator()(velmo::ClickAction action) const noexcept {
        return std::hash<std::string_view>()(velmo::rawValue(action));
    }
};
