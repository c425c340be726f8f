#include "settings/panel_tab.h"

#include "settings/setting_rows.h"
#include "views/builders.h"

namespace velmo {

namespace {

struct PermissionRow {
    const char* title;
    const char* explanation;
    bool isGranted;
    std::function<void()> grant;
    std::function<void()> openSettings;
};

View viewOf(const PermissionRow& row) {
    View status = row.isGranted ? symbol("checkmark.circle.fill").with(foreground(ColorRole::green))
                                : symbol("exclamationmark.circle.fill").with(foreground(ColorRole::orange));
    const char* words = row.isGranted ? "Open Settings" : "Grant…";
    View action =
        row.isGranted ? button(words, row.openSettings, ButtonStyle::borderless) : button(words, row.grant);
    return hstack(
        std::nullopt,
        {std::move(status).with(AccessibilityLabel{row.isGranted ? "Granted" : "Not granted"}),
         vstack(2, {text(row.title), helpText(row.explanation)}, HorizontalAlignment::leading), spacer(),
         std::move(action).with(AccessibilityLabel{std::string(row.title) + ", " + words})},
        VerticalAlignment::firstTextBaseline);
}

}  // namespace

View PanelTab::body() {
    return form({hiddenItemsPanel(), pictures(), permissionRows()});
}

View PanelTab::hiddenItemsPanel() const {
    return section(
        "Hidden items panel",
        {text("The panel shows your hidden icons in a strip under the menu bar and forwards clicks to them. "
              "It works even when the notch leaves no room to reveal the icons in the menu bar itself."),
         button("Open the panel now", onOpenPanel_)});
}

View PanelTab::pictures() const {
    return section(
        "", {settingToggle("Refresh the pictures when opening the panel", preferences_.refreshPanelOnOpen)},
        "Refreshing reveals the icons for a split second to photograph them. Turn this off to reuse the last "
        "pictures instead.");
}

View PanelTab::permissionRows() {
    auto& model = permissions;
    return section("Permissions",
                   {viewOf({"Screen Recording", "Needed to draw pictures of the hidden icons.",
                            model.screenRecording.value(), [&model] { model.grantScreenRecording(); },
                            [&model] { model.openScreenRecordingSettings(); }}),
                    viewOf({"Accessibility", "Needed to forward a click from the panel to the real icon.",
                            model.accessibility.value(), [&model] { model.grantAccessibility(); },
                            [&model] { model.openAccessibilitySettings(); }})},
                   "macOS ties these permissions to the app's signature. After rebuilding with a different "
                   "signature you may need to grant them again.");
}

}  // namespace velmo
