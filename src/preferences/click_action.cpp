#include "preferences/click_action.h"

namespace velmo {

std::string_view rawValue(ClickAction action) {
    switch (action) {
        case ClickAction::revealInMenuBar:
            return "revealInMenuBar";
        case ClickAction::showPanel:
            return "showPanel";
    }
    return {};
}

std::string_view displayName(ClickAction action) {
    switch (action) {
        case ClickAction::revealInMenuBar:
            return "Reveal items in the menu bar";
        case ClickAction::showPanel:
            return "Open the hidden items panel";
    }
    return {};
}

ClickAction clickActionFromRawValue(std::string_view text) {
    for (const ClickAction action : allClickActions) {
        if (rawValue(action) == text)
            return action;
    }
    return ClickAction::revealInMenuBar;
}

}  // namespace velmo
