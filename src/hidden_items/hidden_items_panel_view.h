#pragma once

#include "hidden_items/panel_item.h"
#include "platform/view.h"

#include <functional>
#include <vector>

namespace velmo {

/// What the hidden items panel shows: a row of pictures to click.
struct HiddenItemsPanelView {
    std::vector<PanelItem> hidden;
    std::vector<PanelItem> alwaysHidden;
    std::function<void(const PanelItem&)> onActivate;
    std::function<void()> onSettings;

    View body() const;

private:
    View itemButton(const PanelItem& item) const;
};

}  // namespace velmo
