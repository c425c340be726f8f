#include "settings/setting_rows.h"

#include "views/builders.h"

namespace velmo {

View settingToggle(std::string title, Setting<bool>& setting) {
    return toggle(std::move(title), setting.value(), [&setting](bool isOn) { setting.set(isOn); });
}

View helpText(std::string content) {
    return text(std::move(content)).with(font(TextStyle::caption)).with(foreground(ColorRole::secondary));
}

}  // namespace velmo
