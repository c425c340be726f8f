#include "hidden_items/hidden_items_panel_view.h"

#include "hidden_items/panel_item_button_style.h"
#include "views/builders.h"

namespace velmo {

namespace {

constexpr const char* emptyText =
    "No hidden items yet.\n⌘-drag icons to the left of the divider to hide them.";

/// Points.
constexpr double pictureHeight = 22;
constexpr double labelHeight = 26;

View styledButton(const View& label, const std::string& toolTip, std::function<void()> action) {
    const PanelItemButtonStyle style;
    return plainButton(style.makeBody(label, false), style.makeBody(label, true), std::move(action))
        .with(Help{toolTip})
        .with(AccessibilityLabel{toolTip});
}

View sectionDivider(std::string id) {
    return divider().with(Frame{.height = 16}).with(padding(4, 0)).identifiedBy(std::move(id));
}

View itemLabel(const PanelItem& item) {
    View picture =
        item.image ? resizable(*item.image)
                         .with(Frame{.width = item.info.bounds.standardized().width, .height = pictureHeight})
                   : symbol("app.dashed", 14).with(Frame{.width = 24, .height = pictureHeight});
    return std::move(picture).with(Frame{.height = labelHeight});
}

View settingsButton(const std::function<void()>& action) {
    const View label = symbol("gearshape", 13, FontWeight::medium).with(Frame{.width = 24, .height = 24});
    return styledButton(label, "Velmo Settings", action).identifiedBy("settings");
}

}  // namespace

View HiddenItemsPanelView::itemButton(const PanelItem& item) const {
    return styledButton(itemLabel(item), item.info.displayName().value_or("Menu bar item"),
                        [onActivate = onActivate, item] { onActivate(item); })
        .identifiedBy(std::to_string(item.info.windowID));
}

View HiddenItemsPanelView::body() const {
    Views row;
    if (hidden.empty() && alwaysHidden.empty()) {
        row.push_back(text(emptyText)
                          .with(font(TextStyle::callout))
                          .with(foreground(ColorRole::secondary))
                          .with(padding(8, 0)));
    } else {
        for (const PanelItem& item : hidden)
            row.push_back(itemButton(item));
        if (!alwaysHidden.empty())
            row.push_back(sectionDivider("always-hidden"));
        for (const PanelItem& item : alwaysHidden)
            row.push_back(itemButton(item));
        row.push_back(sectionDivider("end"));
        row.push_back(settingsButton(onSettings));
    }
    return hstack(2, std::move(row)).with(padding(8, 5));
}

}  // namespace velmo
