#include "settings/general_tab.h"

#include "views/builders.h"

namespace velmo {

namespace {

template <typename Cases>
std::vector<PickerOption> optionsOf(const Cases& cases) {
    std::vector<PickerOption> options;
    options.reserve(cases.size());
    for (const auto value : cases)
        options.push_back({std::string(rawValue(value)), std::string(displayName(value)), {}});
    return options;
}

}  // namespace

View GeneralTab::body() const {
    return form({howToUse(), toggleIcon(), general()});
}

View GeneralTab::howToUse() {
    return section(
        "How to use Velmo",
        {label(text({{"Hold ⌘ and drag any menu bar icon to the "},
                     {"left", true},
                     {" of the divider  |  to hide it."}}),
               "1.circle"),
         label(text("Click the toggle icon to show hidden icons, click again to hide them."), "2.circle"),
         label(text("⌥-click the toggle to reveal the always-hidden section  ‖  when it is enabled."),
               "3.circle"),
         label(text("⌘-drag the dividers and the toggle to move where each section starts."), "4.circle")});
}

View GeneralTab::toggleIcon() const {
    auto& style = preferences_.toggleIconStyle;
    auto& action = preferences_.clickAction;
    return section(
        "Toggle icon",
        {picker({"Icon", optionsOf(allToggleIconStyles), std::string(rawValue(style.value())),
                 PickerStyle::menu,
                 [&style](const std::string& tag) { style.set(toggleIconStyleFromRawValue(tag)); }}),
         picker({"Clicking it", optionsOf(allClickActions), std::string(rawValue(action.value())),
                 PickerStyle::radioGroup,
                 [&action](const std::string& tag) { action.set(clickActionFromRawValue(tag)); }})});
}

View GeneralTab::general() const {
    auto& loginItem = loginItem_;
    Views rows{toggle("Launch at login", loginItem.isEnabled.value(),
                      [&loginItem](bool isOn) { loginItem.setEnabled(isOn); })};
    if (const auto& error = loginItem.errorMessage.value())
        rows.push_back(text(*error).with(font(TextStyle::caption)).with(foreground(ColorRole::red)));
    return section("General", std::move(rows));
}

}  // namespace velmo
